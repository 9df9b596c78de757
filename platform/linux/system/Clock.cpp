#include "platform/Clock.h"

#include <glib.h>

namespace platform {

std::time_t currentTime() { return std::time(nullptr); }

long long monotonicMicroseconds() { return g_get_monotonic_time(); }

std::tm localTime(std::time_t time) {
    tzset();  // localtime_r alone need not notice a new zone
    std::tm result{};
    localtime_r(&time, &result);
    return result;
}

}  // namespace platform
