#pragma once

#include <pango/pangocairo.h>

#include <optional>
#include <string>

#include "platform/linux/Handles.h"

namespace platform {

// Lays text out in a font of that size (pixels), wrapped to width if given.
ObjectRef<PangoLayout> makeTextLayout(cairo_t* cairo, const std::string& text, const std::string& fontFamily,
                                      double fontSize, std::optional<double> width = {});

}  // namespace platform
