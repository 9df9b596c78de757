#include "platform/linux/desktop/TextLayout.h"

#include <algorithm>

namespace platform {

ObjectRef<PangoLayout> makeTextLayout(cairo_t* cairo, const std::string& text, const std::string& fontFamily,
                                      double fontSize, std::optional<double> width) {
    ObjectRef<PangoLayout> layout(pango_cairo_create_layout(cairo));
    const Handle<PangoFontDescription, pango_font_description_free> font(pango_font_description_new());
    pango_font_description_set_family(font.get(), fontFamily.c_str());
    pango_font_description_set_absolute_size(font.get(), fontSize * PANGO_SCALE);
    pango_layout_set_font_description(layout.get(), font.get());
    pango_layout_set_text(layout.get(), text.c_str(), static_cast<int>(text.size()));
    if (width) pango_layout_set_width(layout.get(), static_cast<int>(std::max(*width, 0.0) * PANGO_SCALE));
    pango_layout_set_wrap(layout.get(), PANGO_WRAP_WORD_CHAR);
    return layout;
}

}  // namespace platform
