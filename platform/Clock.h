#pragma once

#include <ctime>

namespace platform {

// Seconds since 1970-01-01T00:00:00Z.
std::time_t currentTime();

// A clock that never jumps; all processes of the machine share it.
long long monotonicMicroseconds();

// The calendar time in the system's time zone, read afresh: a change of zone counts from the next call.
std::tm localTime(std::time_t time);

}  // namespace platform
