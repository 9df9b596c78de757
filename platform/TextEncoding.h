#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "platform/portable/CFStringEncoding.h"

namespace platform {

// Text in one encoding as bytes in another; nothing when some of it is invalid or has no counterpart there.
std::optional<std::string> convertText(std::string_view text, CFStringEncoding from, CFStringEncoding to);
// The same with the names that documents declare ("windows-1252"). Nothing for an unknown name or UTF-7
// either.
std::optional<std::string> convertText(std::string_view text, const std::string& from, const std::string& to);

}  // namespace platform
