#pragma once

#include <cstddef>
#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "platform/Timer.h"
#include "platform/URLLoading.h"
#include "service/EventQuestion.h"

// The event service that answers the quake list's query. If answers are kept, one of the last five minutes
// saves the request, processes that ask at the same time share one request, and if a request fails or takes
// more than five seconds, the newest answer of the last 30 days is used.
class EventService {
  public:
    EventService(std::string address, bool keepsAnswers, int minuteMilliseconds);
    EventService(const EventService&) = delete;
    EventService& operator=(const EventService&) = delete;

    // Blocking. The document is QuakeML 1.0.1.
    platform::LoadOutcome load(const std::string& feedQuery, std::string& document);

    // The answer last loaded; empty if the load failed.
    std::optional<ServiceAnswer> answer() const { return mAnswer; }

    // Waits for a request that took so long that an earlier answer was used. Returns whether its own is in
    // the cache now.
    bool finishRequest();

    // If there is a handler, a load that failed is repeated while the main loop runs: after 1, 2, 5 and 10
    // minutes and then every 10 minutes. The handler is called at the first answer, which is in the cache.
    void setNewsHandler(std::function<void()> handler) { mNewsHandler = std::move(handler); }

  private:
    void askAgainLater();
    void askAgain();

    std::string mAddress;
    bool mKeepsAnswers;
    int mMinuteMilliseconds;
    std::optional<ServiceAnswer> mAnswer;
    std::function<void()> mNewsHandler;
    std::string mUrl;  // of the last question
    std::size_t mRetries = 0;
    std::unique_ptr<EventQuestion> mQuestion;  // in the background
    std::unique_ptr<platform::Timer> mPause;
};
