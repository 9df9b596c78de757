#pragma once

#include <memory>
#include <string>

#include "platform/portable/Geometry.h"

namespace platform {

// Components from 0 to 1, plain sRGB.
struct Color {
    double red = 0, green = 0, blue = 0, alpha = 1;

    static Color gray(double white, double alpha) { return {white, white, white, alpha}; }

    bool operator==(const Color&) const = default;
};

struct TextAttributes {
    std::string fontName;
    double fontSize = 12;  // points
    Color foreground;
    double strokeWidth = 0;  // percent of the font size; negative: glyphs filled and outlined

    bool operator==(const TextAttributes&) const = default;
};

// The operations in use, with their published values.
enum class CompositingOperation { Copy = 1, SourceAtop = 5 };

struct Image;

// What a view draws on, in the view's own coordinates: origin at the lower left corner, one unit per point.
// Drawing is clipped to the view.
class Canvas {
  public:
    struct Backing;  // belongs to the desktop

    explicit Canvas(std::unique_ptr<Backing> backing);
    ~Canvas();
    Canvas(const Canvas&) = delete;
    Canvas& operator=(const Canvas&) = delete;

    void fillRect(const Rect& rect, const Color& color);

    // Loads an image file; null when that fails. The canvas owns the image and releases it when the draw is
    // over.
    Image* loadImage(const std::string& path);
    static Size imageSize(const Image* image);

    // Draws the whole image, at its natural size or stretched to a rectangle. fraction is the opacity.
    void drawImageAtPoint(Image* image, const Point& lowerLeft, CompositingOperation operation,
                          double fraction);
    void drawImageInRect(Image* image, const Rect& rect, CompositingOperation operation, double fraction);

    // One line, not wrapped; the point is the lower left corner of its line box.
    void drawTextAtPoint(const std::string& text, const Point& lowerLeft, const TextAttributes& attributes);
    // Wrapped to the rectangle's width, from its top edge down.
    void drawTextInRect(const std::string& text, const Rect& rect, const TextAttributes& attributes);

    Backing& backing() { return *mBacking; }

  private:
    std::unique_ptr<Backing> mBacking;
};

}  // namespace platform
