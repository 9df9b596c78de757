#pragma once

#include <cairo.h>

namespace platform {

class View;

// Draws a tree of views, except hidden ones, with its upper left corner at the context's origin. Every view
// is drawn in full, since a view may place its content by the rectangle that it is asked to draw.
void paintView(View& view, cairo_t* cairo);

}  // namespace platform
