#include "platform/Canvas.h"

#include <cmath>

#include "platform/linux/desktop/CanvasBacking.h"
#include "platform/linux/desktop/TextLayout.h"

namespace platform {

namespace {

void setColor(cairo_t* cairo, const Color& color) {
    cairo_set_source_rgba(cairo, color.red, color.green, color.blue, color.alpha);
}

cairo_operator_t cairoOperator(CompositingOperation operation) {
    return operation == CompositingOperation::Copy ? CAIRO_OPERATOR_SOURCE : CAIRO_OPERATOR_ATOP;
}

// Fills rect with the stretched image. The operators are unbounded, so a clip keeps them inside.
void paintImage(cairo_t* cairo, Image* image, const Rect& rect, CompositingOperation operation,
                double fraction) {
    const Size natural = Canvas::imageSize(image);
    if (natural.width <= 0 || natural.height <= 0 || rect.width <= 0 || rect.height <= 0) return;
    cairo_save(cairo);
    cairo_rectangle(cairo, rect.x, rect.y, rect.width, rect.height);
    cairo_clip(cairo);
    cairo_translate(cairo, rect.x, rect.y);
    cairo_scale(cairo, rect.width / natural.width, rect.height / natural.height);
    cairo_set_operator(cairo, cairoOperator(operation));
    cairo_set_source_surface(cairo, image->surface.get(), 0, 0);
    cairo_pattern_set_extend(cairo_get_source(cairo), CAIRO_EXTEND_PAD);
    cairo_paint_with_alpha(cairo, fraction);
    cairo_restore(cairo);
}

// A negative stroke width means fill and outline, a positive one the outline alone, zero the fill alone.
void paintLayout(cairo_t* cairo, PangoLayout* layout, double x, double y, const TextAttributes& attributes) {
    cairo_save(cairo);
    setColor(cairo, attributes.foreground);
    cairo_move_to(cairo, x, y);
    if (attributes.strokeWidth <= 0) pango_cairo_show_layout(cairo, layout);
    if (attributes.strokeWidth != 0) {
        pango_cairo_layout_path(cairo, layout);
        cairo_set_line_width(cairo, attributes.fontSize * std::fabs(attributes.strokeWidth) / 100);
        cairo_stroke(cairo);
    }
    cairo_restore(cairo);
}

}  // namespace

Canvas::Canvas(std::unique_ptr<Backing> backing) : mBacking(std::move(backing)) {}

Canvas::~Canvas() = default;

void Canvas::fillRect(const Rect& rect, const Color& color) {
    cairo_t* cairo = mBacking->cairo;
    setColor(cairo, color);
    cairo_rectangle(cairo, rect.x, mBacking->downward(rect.y + rect.height), rect.width, rect.height);
    cairo_fill(cairo);
}

Image* Canvas::loadImage(const std::string& path) {
    SurfaceRef surface(cairo_image_surface_create_from_png(path.c_str()));
    if (cairo_surface_status(surface.get()) != CAIRO_STATUS_SUCCESS) return nullptr;
    mBacking->images.push_back(std::make_unique<Image>(Image{std::move(surface)}));
    return mBacking->images.back().get();
}

Size Canvas::imageSize(const Image* image) {
    return {static_cast<double>(cairo_image_surface_get_width(image->surface.get())),
            static_cast<double>(cairo_image_surface_get_height(image->surface.get()))};
}

void Canvas::drawImageAtPoint(Image* image, const Point& lowerLeft, CompositingOperation operation,
                              double fraction) {
    const Size natural = imageSize(image);
    drawImageInRect(image, {lowerLeft.x, lowerLeft.y, natural.width, natural.height}, operation, fraction);
}

void Canvas::drawImageInRect(Image* image, const Rect& rect, CompositingOperation operation,
                             double fraction) {
    const Rect downward{rect.x, mBacking->downward(rect.y + rect.height), rect.width, rect.height};
    paintImage(mBacking->cairo, image, downward, operation, fraction);
}

void Canvas::drawTextAtPoint(const std::string& text, const Point& lowerLeft,
                             const TextAttributes& attributes) {
    const auto layout = makeTextLayout(mBacking->cairo, text, attributes.fontName, attributes.fontSize);
    PangoRectangle box;
    pango_layout_get_pixel_extents(layout.get(), nullptr, &box);
    paintLayout(mBacking->cairo, layout.get(), lowerLeft.x, mBacking->downward(lowerLeft.y) - box.height,
                attributes);
}

void Canvas::drawTextInRect(const std::string& text, const Rect& rect, const TextAttributes& attributes) {
    const auto layout =
        makeTextLayout(mBacking->cairo, text, attributes.fontName, attributes.fontSize, rect.width);
    paintLayout(mBacking->cairo, layout.get(), rect.x, mBacking->downward(rect.y + rect.height), attributes);
}

}  // namespace platform
