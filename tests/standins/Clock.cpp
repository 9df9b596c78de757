#include "tests/standins/Clock.h"

#include <cstdlib>

#include "platform/Clock.h"

namespace platform {

std::time_t currentTime() { return standins::clock().now; }

std::tm localTime(std::time_t time) {
    setenv("TZ", standins::clock().zone.c_str(), 1);
    tzset();
    std::tm local{};
    localtime_r(&time, &local);
    return local;
}

}  // namespace platform
