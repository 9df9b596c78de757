#pragma once

#include <string>

#include "platform/URLLoading.h"

// Sent by a service with an answer, and back to it later to ask whether that answer still holds. One line
// each; empty if not sent.
struct Validators {
    std::string etag;
    std::string lastModified;
};

struct EventReply {
    platform::LoadOutcome outcome{};
    bool isUnchanged = false;  // the answer that the validators came with still holds
    std::string document{};    // QuakeML 1.0.1
    Validators validators{};
};

// Asks an event service and translates its answer as it arrives. An answer may have no events. If the service
// is busy or fails, asks once more after a pause of at most two seconds.
EventReply askEventService(const std::string& url, const Validators& known);
