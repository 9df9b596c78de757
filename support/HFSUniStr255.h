#pragma once

#include <array>
#include <cstdint>

// A file name as UTF-16.
struct HFSUniStr255 {
    std::uint16_t length = 0;  // in 16-bit units
    std::array<std::uint16_t, 255> unicode{};
};
