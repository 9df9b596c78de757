#include "idle/IdleTime.h"

#include <charconv>
#include <cmath>

namespace {

constexpr double kMinMinutes = 0.01;
constexpr double kMaxMinutes = 24 * 60;
constexpr double kMillisecondsPerMinute = 60'000;

bool isAllowed(double minutes) {
    return minutes == 0 || (minutes >= kMinMinutes && minutes <= kMaxMinutes);  // false for NaN
}

}  // namespace

std::optional<std::chrono::milliseconds> parseMinutes(std::string_view text) {
    double minutes = 0;
    const char* end = text.data() + text.size();
    const auto [rest, error] = std::from_chars(text.data(), end, minutes);
    if (error != std::errc() || rest != end || !isAllowed(minutes)) return std::nullopt;
    return std::chrono::milliseconds(std::llround(minutes * kMillisecondsPerMinute));
}
