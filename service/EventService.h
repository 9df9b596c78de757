#pragma once

#include <ctime>
#include <optional>
#include <string>

#include "platform/URLLoading.h"

// The event service that answers the quake list's query. If answers are kept, one of the last five minutes
// saves the request, processes that ask at the same time share one request, and if a request fails or another
// process's takes too long, the newest answer of the last 30 days is used.
class EventService {
  public:
    EventService(std::string address, bool keepsAnswers);

    // Blocking. The document is QuakeML 1.0.1.
    platform::LoadOutcome load(const std::string& feedQuery, std::string& document);

    // The time of the answer last loaded, if it is an earlier one.
    std::optional<std::time_t> asOf() const { return mAsOf; }

  private:
    std::string mAddress;
    bool mKeepsAnswers;
    std::optional<std::time_t> mAsOf;
};
