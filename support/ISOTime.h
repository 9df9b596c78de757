#pragma once

#include <chrono>
#include <optional>
#include <string>
#include <string_view>

using ISOTime = std::chrono::sys_time<std::chrono::milliseconds>;

// Reads a time of ISO 8601 with seconds, of any precision and in any zone: 2009-03-03T01:05:09.123+13:00. It
// is UTC where it names no zone; what follows the milliseconds is cut off. Nothing for any other text.
std::optional<ISOTime> readISOTime(std::string_view text);

// 2009-03-03T01:05:09
std::string isoTime(std::chrono::sys_seconds time);
