#include "tests/standins/Canvas.h"

#include <utility>

namespace platform {

Canvas::Canvas(std::unique_ptr<Backing> backing) : mBacking(std::move(backing)) {}
Canvas::~Canvas() = default;

void Canvas::fillRect(const Rect& rect, const Color& color) {
    mBacking->drawings.push_back({.place = rect, .color = color});
}

Image* Canvas::loadImage(const std::string& path) {
    if (path.empty()) return nullptr;
    mBacking->loadedImages.push_back(std::make_unique<Image>(Image{path}));
    return mBacking->loadedImages.back().get();
}

Size Canvas::imageSize(const Image*) { return {600, 400}; }

void Canvas::drawImageAtPoint(Image* image, const Point& lowerLeft, CompositingOperation operation,
                              double fraction) {
    drawImageInRect(image, {lowerLeft.x, lowerLeft.y, 0, 0}, operation, fraction);
}

void Canvas::drawImageInRect(Image* image, const Rect& rect, CompositingOperation operation,
                             double fraction) {
    mBacking->drawings.push_back(
        {.what = image->path, .place = rect, .operation = operation, .fraction = fraction});
}

void Canvas::drawTextAtPoint(const std::string& text, const Point& lowerLeft,
                             const TextAttributes& attributes) {
    drawTextInRect(text, {lowerLeft.x, lowerLeft.y, 0, 0}, attributes);
}

void Canvas::drawTextInRect(const std::string& text, const Rect& rect, const TextAttributes& attributes) {
    mBacking->drawings.push_back({.what = text, .place = rect, .attributes = attributes});
}

}  // namespace platform
