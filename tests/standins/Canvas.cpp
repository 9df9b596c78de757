#include "tests/standins/Canvas.h"

#include <utility>

namespace standins {

Images& images() {
    static Images state;
    return state;
}

std::unique_ptr<platform::Canvas> makeCanvas() {
    return std::make_unique<platform::Canvas>(std::make_unique<platform::Canvas::Backing>());
}

}  // namespace standins

namespace platform {

Canvas::Canvas(std::unique_ptr<Backing> backing) : mBacking(std::move(backing)) {}

Canvas::~Canvas() = default;

void Canvas::fillRect(const Rect& rect, const Color& color) {
    mBacking->order.push_back("fill");
    mBacking->fills.push_back({rect, color});
}

Image* Canvas::loadImage(const std::string& path) {
    if (path.empty()) return nullptr;
    mBacking->loadedImages.push_back(std::make_unique<Image>(Image{path}));
    return mBacking->loadedImages.back().get();
}

Size Canvas::imageSize(const Image*) { return standins::images().size; }

void Canvas::drawImageAtPoint(Image* image, const Point& lowerLeft, CompositingOperation operation,
                              double fraction) {
    mBacking->order.push_back("image");
    mBacking->drawnImages.push_back({image->path, lowerLeft, std::nullopt, operation, fraction});
}

void Canvas::drawImageInRect(Image* image, const Rect& rect, CompositingOperation operation,
                             double fraction) {
    mBacking->order.push_back("image");
    mBacking->drawnImages.push_back({image->path, std::nullopt, rect, operation, fraction});
}

void Canvas::drawTextAtPoint(const std::string& text, const Point& lowerLeft,
                             const TextAttributes& attributes) {
    mBacking->order.push_back("text");
    mBacking->texts.push_back({text, lowerLeft, std::nullopt, attributes});
}

void Canvas::drawTextInRect(const std::string& text, const Rect& rect, const TextAttributes& attributes) {
    mBacking->order.push_back("text");
    mBacking->texts.push_back({text, std::nullopt, rect, attributes});
}

}  // namespace platform
