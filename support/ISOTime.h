#pragma once

#include <chrono>
#include <optional>
#include <string>
#include <string_view>

using ISOTime = std::chrono::sys_time<std::chrono::milliseconds>;

// Reads an ISO 8601 time with seconds, of any precision and in any zone: 2009-03-03T01:05:09.123+13:00. A
// time without a zone is UTC. Digits after the milliseconds are dropped. Empty for any other text.
std::optional<ISOTime> readISOTime(std::string_view text);

// 2009-03-03T01:05:09
std::string isoTime(std::chrono::sys_seconds time);
