#pragma once

#include <cairo.h>

namespace platform {

class View;

// Draws a tree of views, hidden ones left out, with its upper left corner at the context's origin. Every view
// is drawn whole, since views may place their content by the rectangle that they are asked for.
void paintView(View& view, cairo_t* cairo);

}  // namespace platform
