#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "platform/Canvas.h"

namespace standins {

struct Fill {
    platform::Rect rect;
    platform::Color color;
};

struct DrawnImage {
    std::string path;
    std::optional<platform::Point> point;
    std::optional<platform::Rect> rect;
    platform::CompositingOperation operation;
    double fraction;
};

struct DrawnText {
    std::string text;
    std::optional<platform::Point> point;
    std::optional<platform::Rect> rect;
    platform::TextAttributes attributes;
};

struct Images {
    platform::Size size{600, 400};  // of every image
};

Images& images();

// A canvas that only notes what was drawn.
std::unique_ptr<platform::Canvas> makeCanvas();

}  // namespace standins

namespace platform {

struct Image {
    std::string path;
};

struct Canvas::Backing {
    std::vector<std::string> order;  // "fill", "image" or "text", one for each drawing
    std::vector<standins::Fill> fills;
    std::vector<standins::DrawnImage> drawnImages;
    std::vector<standins::DrawnText> texts;
    std::vector<std::unique_ptr<Image>> loadedImages;
};

}  // namespace platform
