#pragma once

#include <cairo.h>

#include <memory>
#include <vector>

#include "platform/Canvas.h"
#include "platform/linux/desktop/CairoHandles.h"

namespace platform {

struct Image {
    SurfaceRef surface;
};

// A cairo context with its origin at the view's upper left corner and y growing downward, and the height
// needed to flip the canvas's coordinates.
struct Canvas::Backing {
    cairo_t* cairo;  // owned by whoever draws
    double height;
    std::vector<std::unique_ptr<Image>> images;

    double downward(double y) const { return height - y; }
};

inline std::unique_ptr<Canvas::Backing> makeCanvasBacking(cairo_t* cairo, double height) {
    return std::make_unique<Canvas::Backing>(Canvas::Backing{cairo, height, {}});
}

}  // namespace platform
