#pragma once

#include <cairo.h>

#include "platform/linux/Handles.h"

namespace platform {

using SurfaceRef = Handle<cairo_surface_t, cairo_surface_destroy>;
using CairoRef = Handle<cairo_t, cairo_destroy>;

}  // namespace platform
