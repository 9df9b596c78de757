#pragma once

#include <ctime>
#include <optional>
#include <string>

#include "platform/URLLoading.h"

struct ServiceAnswer {
    std::time_t time;  // when the service gave it or confirmed it
    bool isKept;       // taken from the cache without a request, or after one that failed
};

// The event service that answers the quake list's query. If answers are kept, one of the last five minutes
// saves the request, processes that ask at the same time share one request, and if a request fails or another
// process's takes too long, the newest answer of the last 30 days is used.
class EventService {
  public:
    EventService(std::string address, bool keepsAnswers);

    // Blocking. The document is QuakeML 1.0.1.
    platform::LoadOutcome load(const std::string& feedQuery, std::string& document);

    // The answer last loaded; empty if the load failed.
    std::optional<ServiceAnswer> answer() const { return mAnswer; }

  private:
    platform::LoadOutcome loadWithoutCache(const std::string& url, std::string& document);

    std::string mAddress;
    bool mKeepsAnswers;
    std::optional<ServiceAnswer> mAnswer;
};
