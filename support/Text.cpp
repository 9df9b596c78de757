#include "support/Text.h"

#include <algorithm>
#include <cstdint>
#include <cstring>

std::string_view trimmed(std::string_view text, std::string_view blanks) {
    const std::size_t first = text.find_first_not_of(blanks);
    if (first == text.npos) return {};
    return text.substr(first, text.find_last_not_of(blanks) - first + 1);
}

// Checks eight bytes at a time: nearly every text of a feed passes through here, and is ASCII.
bool isASCII(std::string_view text) {
    constexpr std::uint64_t kHighBits = 0x8080808080808080;
    std::size_t i = 0;
    for (; i + sizeof(std::uint64_t) <= text.size(); i += sizeof(std::uint64_t)) {
        std::uint64_t bytes;
        std::memcpy(&bytes, text.data() + i, sizeof bytes);
        if ((bytes & kHighBits) != 0) return false;
    }
    return std::all_of(text.begin() + i, text.end(),
                       [](char c) { return static_cast<unsigned char>(c) < 0x80; });
}
