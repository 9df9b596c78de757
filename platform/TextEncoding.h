#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "platform/portable/CFStringEncoding.h"

namespace platform {

// Converts text to another encoding. Returns nothing when any of it is invalid or has no counterpart there.
std::optional<std::string> convertText(std::string_view text, CFStringEncoding from, CFStringEncoding to);
// The same, with names as documents declare them ("windows-1252"). Nothing for an unknown name or UTF-7, too.
std::optional<std::string> convertText(std::string_view text, const std::string& from, const std::string& to);

}  // namespace platform
