#pragma once

#include <string>

#include "platform/URLLoading.h"

// What a service gives along with an answer, to be asked later whether that is still the answer. One line
// each; empty where it gave none.
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

// Asks an event service and translates its answer while it arrives. No event is an answer too. When the
// service is too busy or fails, it is asked once more after a pause of at most two seconds.
EventReply askEventService(const std::string& url, const Validators& known);
