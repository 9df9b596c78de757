#include "platform/linux/desktop/NoticePanel.h"

#include <algorithm>

#include "platform/linux/desktop/TextLayout.h"

namespace platform {

namespace {

constexpr double kPadding = 24;

ObjectRef<PangoLayout> makeLayout(cairo_t* cairo, const Size& area, const std::string& text) {
    const double fontSize = std::clamp(area.height / 45, 9.0, 28.0);
    const double width = std::max(area.width * 0.8 - 2 * kPadding, 40.0);
    return makeTextLayout(cairo, text.substr(0, text.find_last_not_of('\n') + 1), "Sans", fontSize, width);
}

}  // namespace

void drawNoticePanel(cairo_t* cairo, const Size& area, const std::string& text) {
    const auto layout = makeLayout(cairo, area, text);
    PangoRectangle box;
    pango_layout_get_pixel_extents(layout.get(), nullptr, &box);
    const double x = (area.width - box.width) / 2;
    const double y = (area.height - box.height) / 2;

    cairo_save(cairo);
    cairo_set_operator(cairo, CAIRO_OPERATOR_OVER);
    cairo_set_source_rgba(cairo, 0.1, 0.1, 0.12, 0.92);
    cairo_rectangle(cairo, x - kPadding, y - kPadding, box.width + 2 * kPadding, box.height + 2 * kPadding);
    cairo_fill(cairo);
    cairo_set_source_rgb(cairo, 1, 1, 1);
    cairo_move_to(cairo, x - box.x, y - box.y);
    pango_cairo_show_layout(cairo, layout.get());
    cairo_restore(cairo);
}

}  // namespace platform
