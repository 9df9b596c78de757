#pragma once

#include <chrono>
#include <string>
#include <string_view>

// A time of ISO 8601 with seconds, in any zone (UTC where it names none) and of any precision, as the feed
// writes it: UTC, milliseconds, Z. What follows the milliseconds is cut off. A text that is no such time
// comes back as it is.
std::string eventTimeInUTC(std::string_view text);

// 2009-03-03T01:05:09
std::string isoTime(std::chrono::sys_seconds time);
