#pragma once

#include <string>

namespace platform {

// How a load ended.
struct LoadOutcome {
    int errorCode = 0;    // 0 when the resource was had
    std::string failure;  // for people
    std::string source;   // who answered, for people; empty where the URL did
};

}  // namespace platform
