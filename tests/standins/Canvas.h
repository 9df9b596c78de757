#pragma once

#include <memory>
#include <string>
#include <vector>

#include "platform/Canvas.h"

namespace standins {

// Something drawn; what its kind does not have stays as it is here. A point is a rectangle without a size.
struct Drawing {
    std::string what = "fill";  // or the text, or the image's path
    platform::Rect place{};
    platform::Color color{};
    platform::CompositingOperation operation = platform::CompositingOperation::Copy;
    double fraction = 1;
    platform::TextAttributes attributes{};

    bool operator==(const Drawing&) const = default;
};

}  // namespace standins

namespace platform {

struct Image {
    std::string path;
};

// Notes what was drawn; every image measures 600 by 400.
struct Canvas::Backing {
    std::vector<standins::Drawing> drawings;
    std::vector<std::unique_ptr<Image>> loadedImages;
};

}  // namespace platform

namespace standins {

inline std::unique_ptr<platform::Canvas> makeCanvas() {
    return std::make_unique<platform::Canvas>(std::make_unique<platform::Canvas::Backing>());
}

}  // namespace standins
