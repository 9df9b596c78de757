#pragma once

#include <ctime>

namespace platform {

// Seconds since 1970-01-01T00:00:00Z.
std::time_t currentTime();

// A clock that never jumps and is the same for all processes on the machine.
long long monotonicMicroseconds();

// The calendar time in the system's time zone. Each call rereads the zone, so a change takes effect.
std::tm localTime(std::time_t time);

}  // namespace platform
