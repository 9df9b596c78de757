#pragma once

#include <string>

namespace platform {

// How a load ended.
struct LoadOutcome {
    int errorCode = 0;    // 0 when the resource was had
    std::string failure;  // for people
};

}  // namespace platform
