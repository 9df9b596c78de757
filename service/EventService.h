#pragma once

#include <ctime>
#include <optional>
#include <string>

#include "platform/URLLoading.h"

// The event service that answers the quake list's query. With answers kept: one of the last five minutes
// saves the request, processes that ask at the same time make one request between them, and where the request
// fails or another process's takes long, the newest answer that the service gave in the last 30 days is used.
class EventService {
  public:
    EventService(std::string address, bool keepsAnswers);

    // Blocking. The document is QuakeML 1.0.1.
    platform::LoadOutcome load(const std::string& feedQuery, std::string& document);

    // The time of the answer last loaded, if it is an earlier one in place of a request that failed.
    std::optional<std::time_t> asOf() const { return mAsOf; }

  private:
    std::string mAddress;
    bool mKeepsAnswers;
    std::optional<std::time_t> mAsOf;
};
