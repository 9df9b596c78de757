#pragma once

#include <cstdint>

namespace platform {

// Encodings by their published numbers.
using CFStringEncoding = std::uint32_t;
inline constexpr CFStringEncoding kCFStringEncodingMacRoman = 0;
inline constexpr CFStringEncoding kCFStringEncodingUTF8 = 0x08000100;
inline constexpr CFStringEncoding kCFStringEncodingUnicode = 0x0100;  // UTF-16 of the machine's byte order

}  // namespace platform
