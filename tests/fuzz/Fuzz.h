#pragma once

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <string_view>

#include "tests/TemporaryFolder.h"
#include "tests/standins/Desktop.h"

// Each target defines this, which requires what holds for any input.
void fuzz(std::string_view input);

#define REQUIRE(condition) \
    if (!(condition))      \
    std::fprintf(stderr, "%s:%d: not so: %s\n", __FILE__, __LINE__, #condition), std::abort()

// libFuzzer calls this.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const TemporaryFolder current;
    standins::desktop = {};
    fuzz({reinterpret_cast<const char*>(data), size});
    return 0;
}

// Takes the next line off the input.
inline std::string takeLine(std::string_view& input) {
    const std::string line(input.substr(0, input.find('\n')));
    input.remove_prefix(std::min(line.size() + 1, input.size()));
    return line;
}

inline bool hasControls(std::string_view text) {
    return std::ranges::any_of(text, [](unsigned char byte) { return byte < ' ' || byte == 0x7f; });
}
