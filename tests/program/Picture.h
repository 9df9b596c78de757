#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <vector>

struct Color {
    int red, green, blue;

    bool operator==(const Color&) const = default;
    int darkest() const { return std::min({red, green, blue}); }
    int brightest() const { return std::max({red, green, blue}); }
};

// What a part of the screen showed at one moment.
struct Picture {
    int width = 0, height = 0;
    std::vector<std::uint32_t> pixels;  // 0xRRGGBB, row by row from the top

    bool operator==(const Picture&) const = default;

    Color at(int x, int y) const {
        const std::uint32_t pixel = pixels[static_cast<std::size_t>(y) * static_cast<std::size_t>(width) +
                                           static_cast<std::size_t>(x)];
        return {static_cast<int>(pixel >> 16 & 255), static_cast<int>(pixel >> 8 & 255),
                static_cast<int>(pixel & 255)};
    }

    // How many pixels of the part satisfy the condition.
    template <typename Condition>
    int count(int left, int top, int right, int bottom, const Condition& condition) const {
        int found = 0;
        for (int y = top; y < bottom; ++y)
            for (int x = left; x < right; ++x) found += condition(at(x, y));
        return found;
    }

    // Whether the pixels in the four corners of the upper left part satisfy the condition.
    template <typename Condition>
    bool hasCorners(int right, int bottom, const Condition& condition) const {
        return condition(at(0, 0)) && condition(at(right - 1, 0)) && condition(at(0, bottom - 1)) &&
               condition(at(right - 1, bottom - 1));
    }

    // As count, of the outermost pixels of the four sides.
    template <typename Condition>
    int countOnEdges(const Condition& condition) const {
        return count(0, 0, width, 1, condition) + count(0, height - 1, width, height, condition) +
               count(0, 0, 1, height, condition) + count(width - 1, 0, width, height, condition);
    }
};
