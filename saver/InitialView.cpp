#include "saver/InitialView.h"

#include "platform/Bundle.h"
#include "platform/Canvas.h"
#include "saver/Acknowledgement.h"

namespace {

constexpr platform::Color kBackground{0.6, 0.7019609808921814, 0.8, 1.0};
constexpr char kMapImageName[] = "google_maps_nz.png";
constexpr double kMapOpacity = 0.3;

constexpr char kNotice[] = "All real time earthquake data provided by GeoNet (www.geonet.org.nz).";
constexpr double kTextInset = 10.0;
constexpr double kTextLeft = 10.0;
constexpr double kNoticeBelowTop = 5.0;  // both measured from the top of the inset bounds
constexpr double kAcknowledgementBelowTop = 25.0;

}  // namespace

void InitialView::drawRect(const platform::Rect& rect) {
    clearBackground(rect);
    drawImage(rect);
    drawNotice();
}

void InitialView::clearBackground(const platform::Rect& rect) { canvas().fillRect(rect, kBackground); }

void InitialView::drawImage(const platform::Rect& rect) {
    platform::Image* const image = canvas().loadImage(platform::pathForResource(kMapImageName));
    if (!image) return;
    const platform::Size size = platform::Canvas::imageSize(image);
    const platform::Point lowerLeft{0.5 * (rect.width - size.width), 0.5 * (rect.height - size.height)};
    canvas().drawImageAtPoint(image, lowerLeft, platform::CompositingOperation::SourceAtop, kMapOpacity);
}

void InitialView::drawNotice() {
    const double height = platform::insetRect(bounds(), kTextInset, kTextInset).height;
    platform::TextAttributes attributes{
        .fontName = "Verdana", .fontSize = 12.0, .foreground = platform::Color::gray(0.0, 0.75)};
    canvas().drawTextAtPoint(kAcknowledgement, {kTextLeft, height - kAcknowledgementBelowTop}, attributes);
    attributes.strokeWidth = -2.0;
    canvas().drawTextAtPoint(kNotice, {kTextLeft, height - kNoticeBelowTop}, attributes);
}
