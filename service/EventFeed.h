#pragma once

#include <optional>
#include <string>

#include "platform/URLLoading.h"
#include "service/EventQuery.h"
#include "service/EventService.h"

// Where the quake list's feed comes from. The program creates one to answer the list's query.
class EventFeed {
  public:
    struct Source {
        std::string service = kDefaultEventService;  // the event service's address
        std::string document{};    // URL of a QuakeML document in place of the service's answer; or empty
        bool keepsAnswers = true;  // of the service, between runs
    };

    explicit EventFeed(Source source);

    // Answers the quake list's query with QuakeML that the list's parser reads. Blocks. For any other URL
    // returns nothing and leaves data alone.
    std::optional<platform::LoadOutcome> answer(const std::string& url, std::string& data);

    // A script that sets window.TELLMAR_AS_OF to the time of the earlier answer in use, in UTC (ISO 8601), or
    // to null while the quakes are up to date.
    std::string asOfScript() const;

  private:
    platform::LoadOutcome loadDocument(std::string& data) const;

    std::string mDocument;
    EventService mService;
};
