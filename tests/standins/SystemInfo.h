#pragma once

#include "platform/SystemInfo.h"

namespace standins {

// The machine that the core sees.
struct Machine {
    platform::SystemNames names = {"System", "node", "1.2.3", "hardware"};
    std::int32_t version = 0x1049;
    std::int32_t clock = 1'600'000'000;
    std::string name = "Model 7", process = "Tellmar Tests";
    std::vector<platform::Processor> processors = {{7, 3}, {18, 10}};
};

inline Machine& machine() {
    static Machine machine;
    return machine;
}

}  // namespace standins
