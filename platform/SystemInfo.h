#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace platform {

struct SystemNames {
    std::string system, node, release, machine;
};
SystemNames systemNames();

// The system's version, its decimal digits packed as hexadecimal ones: 10.4.9 is 0x1049. 0 when unknown.
std::int32_t systemVersion();
std::int32_t processorClock();  // Hz, capped at the largest value; 0 when unknown

// The machine's model; empty when unknown.
std::string machineName();
std::string processName();

struct Processor {
    std::int32_t type, subtype;  // the platform's published numbers
};
std::vector<Processor> processors();

}  // namespace platform
