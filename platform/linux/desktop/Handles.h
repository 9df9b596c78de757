#pragma once

#include <cairo.h>
#include <glib-object.h>

#include <memory>

namespace platform {

struct Unref {
    void operator()(gpointer object) const { g_object_unref(object); }
};
// One reference to a GObject.
template <typename T>
using ObjectRef = std::unique_ptr<T, Unref>;

struct Free {
    void operator()(gpointer memory) const { g_free(memory); }
};
// A text that GLib allocated.
using GText = std::unique_ptr<char, Free>;

struct SurfaceDestroy {
    void operator()(cairo_surface_t* surface) const { cairo_surface_destroy(surface); }
};
using SurfaceRef = std::unique_ptr<cairo_surface_t, SurfaceDestroy>;

struct CairoDestroy {
    void operator()(cairo_t* cairo) const { cairo_destroy(cairo); }
};
using CairoRef = std::unique_ptr<cairo_t, CairoDestroy>;

}  // namespace platform
