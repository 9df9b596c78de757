#include "platform/linux/desktop/NoticePanel.h"

#include <pango/pangocairo.h>

#include <algorithm>

#include "platform/linux/desktop/Handles.h"

namespace platform {

namespace {

constexpr double kPadding = 24;

ObjectRef<PangoLayout> makeLayout(cairo_t* cairo, const Size& area, const std::string& text) {
    ObjectRef<PangoLayout> layout(pango_cairo_create_layout(cairo));
    const double size = std::clamp(area.height / 45, 9.0, 28.0);
    PangoFontDescription* font = pango_font_description_from_string("Sans");
    pango_font_description_set_absolute_size(font, size * PANGO_SCALE);
    pango_layout_set_font_description(layout.get(), font);
    pango_font_description_free(font);
    pango_layout_set_width(layout.get(),
                           static_cast<int>(std::max(area.width * 0.8 - 2 * kPadding, 40.0)) * PANGO_SCALE);
    pango_layout_set_wrap(layout.get(), PANGO_WRAP_WORD_CHAR);
    const auto visible = text.find_last_not_of('\n') + 1;
    pango_layout_set_text(layout.get(), text.c_str(), static_cast<int>(visible));
    return layout;
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
