#pragma once

namespace platform {

struct Point {
    double x = 0, y = 0;

    bool operator==(const Point&) const = default;
};

struct Size {
    double width = 0, height = 0;

    bool operator==(const Size&) const = default;
};

// (x, y) is the lower left corner: coordinates grow to the right and upward.
struct Rect {
    double x = 0, y = 0, width = 0, height = 0;

    Size size() const { return {width, height}; }

    bool operator==(const Rect&) const = default;
};

// Moves the left and right edges inward by dx, the others by dy.
inline Rect insetRect(const Rect& rect, double dx, double dy) {
    return {rect.x + dx, rect.y + dy, rect.width - 2 * dx, rect.height - 2 * dy};
}

}  // namespace platform
