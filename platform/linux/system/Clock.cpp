#include "platform/Clock.h"

namespace platform {

std::time_t currentTime() { return std::time(nullptr); }

std::tm localTime(std::time_t time) {
    tzset();  // localtime_r alone need not notice a new zone
    std::tm result{};
    localtime_r(&time, &result);
    return result;
}

}  // namespace platform
