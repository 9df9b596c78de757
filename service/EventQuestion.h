#pragma once

#include <ctime>
#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "platform/URLLoading.h"
#include "service/AnswerCache.h"
#include "service/EventRequest.h"
#include "service/RequestLock.h"

struct ServiceAnswer {
    std::time_t time;  // when the service gave it or confirmed it
    bool isKept;       // taken from the cache without a request, or after one that failed or takes long
};

// One question to an event service, answered from the cache if possible. Its answer goes into the cache, even
// when nobody waits for it any more.
class EventQuestion {
  public:
    EventQuestion(std::string service, std::string url, bool keepsAnswers);

    // Blocking. If the service is silent and an earlier answer can be used, that is after five seconds, and
    // the request goes on while the main loop runs.
    platform::LoadOutcome answer(std::string& document);
    // How answer was answered; empty if it failed.
    std::optional<ServiceAnswer> serviceAnswer() const { return mServiceAnswer; }
    bool isAsking() const { return mRequest != nullptr; }
    // Whether the service did, though too late for answer.
    bool hasBeenAnswered() const { return mGiven.has_value(); }

    // Not blocking. Calls done, at once or from the main loop, when there is an answer in the cache, be it
    // another process's, or the request has failed. done may destroy this.
    void askInBackground(std::function<void(bool isAnswered)> done);

  private:
    platform::LoadOutcome answerWithCache(std::string& document);
    platform::LoadOutcome askAndWait(const std::optional<KeptAnswer>& earlier, std::string& document);
    platform::LoadOutcome use(const KeptAnswer& answer, std::string& document);
    platform::LoadOutcome useInstead(const std::optional<KeptAnswer>& earlier,
                                     const platform::LoadOutcome& failed, std::string& document);
    bool hasFresh();
    std::optional<KeptAnswer> earlierAnswer() const;
    void askUnlessAnswered();
    void ask();
    void take(EventReply reply);
    void keep(KeptAnswer answer);
    int millisecondsLeft() const;

    const std::string mService, mUrl;
    const bool mKeepsAnswers;
    const AnswerCache mCache;
    const long long mStart;           // microseconds
    std::optional<KeptAnswer> mKept;  // to this question
    std::unique_ptr<RequestLock> mLock;
    std::unique_ptr<EventRequest> mRequest;
    platform::LoadOutcome mOutcome;    // of the request
    std::optional<KeptAnswer> mGiven;  // by the request
    std::optional<ServiceAnswer> mServiceAnswer;
    std::function<void(bool isAnswered)> mDone;
    std::unique_ptr<platform::Timer> mPause;
};
