#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

struct Color {
    int red, green, blue;
};

// What a view showed at one moment.
struct Picture {
    int width = 0, height = 0;
    std::vector<std::uint32_t> pixels;  // 0xAARRGGBB, row by row from the top

    bool operator==(const Picture&) const = default;

    Color at(int x, int y) const {
        const std::uint32_t pixel = pixels[static_cast<std::size_t>(y * width + x)];
        return {static_cast<int>(pixel >> 16 & 255), static_cast<int>(pixel >> 8 & 255),
                static_cast<int>(pixel & 255)};
    }
};
