#pragma once

#include <functional>
#include <optional>
#include <string>
#include <utility>

#include "platform/URLLoading.h"
#include "service/EventQuery.h"
#include "service/EventService.h"

// Where the quake list's feed comes from. The program creates one to answer the list's query.
class EventFeed {
  public:
    struct Source {
        std::string service = kDefaultEventService;  // the event service's address
        std::string document{};    // URL of a QuakeML document in place of the service's answer; or empty
        bool isSample = false;     // that document
        bool keepsAnswers = true;  // of the service, between runs
        int minuteMilliseconds = 60'000;  // between two requests; less for a test of the whole program
    };
    enum class Kind { Service, Document, Sample };

    explicit EventFeed(Source source);

    // Answers the quake list's query with QuakeML that the list's parser reads. Blocks. For any other URL
    // returns nothing and leaves data alone.
    std::optional<platform::LoadOutcome> answer(const std::string& url, std::string& data);

    // If there is a handler, a request to the service that failed is repeated in the background, and the
    // handler called once there is an answer.
    void setNewsHandler(std::function<void()> handler) { mService.setNewsHandler(std::move(handler)); }

    // Waits for a request of the service that took so long that an earlier answer was used. Returns whether
    // its own is in the cache now.
    bool finishRequest() { return mService.finishRequest(); }

    Kind kind() const;
    // Who supplies the earthquakes, for a reader: GeoNet, a service's host or a file's name.
    std::string sourceName() const;
    // The service's answer in use; empty for a document.
    std::optional<ServiceAnswer> serviceAnswer() const { return mService.answer(); }
    // Why the list's query had no answer that its parser can read; empty if it had.
    const std::string& failure() const { return mFailure; }

  private:
    platform::LoadOutcome loadDocument(std::string& data);

    Source mSource;
    EventService mService;
    std::string mFailure;
};
