#pragma once

#include <chrono>
#include <optional>
#include <string_view>

// Parses a number of minutes, such as 3 or 0.5: 0, or 0.01 to 1440. Empty for anything else.
std::optional<std::chrono::milliseconds> parseMinutes(std::string_view text);
