#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

// Encodings by their published numbers.
using CFStringEncoding = std::uint32_t;
inline constexpr CFStringEncoding kCFStringEncodingMacRoman = 0;
inline constexpr CFStringEncoding kCFStringEncodingUTF8 = 0x08000100;
inline constexpr CFStringEncoding kCFStringEncodingUnicode = 0x0100;  // UTF-16 of the machine's byte order

namespace platform {

// Text in one encoding as bytes in another; nothing when some of it is invalid or has no counterpart there.
std::optional<std::string> convertText(std::string_view text, CFStringEncoding from, CFStringEncoding to);
// The same with the names that documents declare ("windows-1252"). Nothing for an unknown name either.
std::optional<std::string> convertText(std::string_view text, const std::string& from, const std::string& to);

}  // namespace platform
