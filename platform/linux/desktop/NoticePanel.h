#pragma once

#include <cairo.h>

#include <string>

#include "platform/portable/Geometry.h"

namespace platform {

// Draws text on a panel in the middle of an area of that size.
void drawNoticePanel(cairo_t* cairo, const Size& area, const std::string& text);

}  // namespace platform
