#include "platform/linux/desktop/CrossFade.h"

#include <cairo-xlib.h>
#include <gdk/gdkx.h>

#include <algorithm>
#include <cmath>
#include <utility>

#include "platform/RunLoop.h"

namespace platform {

namespace {

constexpr int kGracePeriod = 500;  // milliseconds past the fade's end, in case the widget gets no frames
// Of 255. In smaller steps, a picture that is blended again and again lags behind by rounding.
constexpr int kMinAlpha = 4;

// The area on an X11 window, past GTK's own buffers.
SurfaceRef surfaceOnScreen(GtkWidget* area) {
    GtkWidget* const topLevel = gtk_widget_get_toplevel(area);
    GdkWindow* const window = gtk_widget_get_window(topLevel);
    if (!GDK_IS_X11_WINDOW(window)) return nullptr;
    const int scale = gdk_window_get_scale_factor(window);
    int left = 0, top = 0;
    gtk_widget_translate_coordinates(area, topLevel, 0, 0, &left, &top);
    SurfaceRef surface(cairo_xlib_surface_create(
        gdk_x11_display_get_xdisplay(gdk_window_get_display(window)), gdk_x11_window_get_xid(window),
        gdk_x11_visual_get_xvisual(gdk_window_get_visual(window)), scale * gdk_window_get_width(window),
        scale * gdk_window_get_height(window)));
    cairo_surface_set_device_scale(surface.get(), scale, scale);
    cairo_surface_set_device_offset(surface.get(), scale * left, scale * top);
    return surface;
}

}  // namespace

CrossFade::CrossFade(GtkWidget* area, SurfaceRef before, double seconds)
    : mArea(static_cast<GtkWidget*>(g_object_ref(area))),
      mBefore(std::move(before)),
      mOnScreen(surfaceOnScreen(area)),
      mSeconds(seconds) {}

void CrossFade::run(SurfaceRef after) {
    mAfter = std::move(after);
    const guint frameCallback = gtk_widget_add_tick_callback(
        mArea.get(),
        [](GtkWidget*, GdkFrameClock* clock, gpointer self) -> gboolean {
            static_cast<CrossFade*>(self)->advance(gdk_frame_clock_get_frame_time(clock));
            return G_SOURCE_CONTINUE;
        },
        this, nullptr);
    RunLoop::runUntil([this] { return mIsOver || !gtk_widget_get_mapped(mArea.get()); },
                      static_cast<int>(mSeconds * 1000) + kGracePeriod);
    gtk_widget_remove_tick_callback(mArea.get(), frameCallback);
}

void CrossFade::advance(gint64 frameTime) {
    if (mStart == 0) mStart = frameTime;
    const double seconds = static_cast<double>(frameTime - mStart) / G_USEC_PER_SEC;
    const double progress = seconds < mSeconds ? seconds / mSeconds : 1;
    mIsOver = mIsOver || progress == 1;
    if (mOnScreen) return blend(progress);
    mProgress = progress;
    ++mFrames;
    gtk_widget_queue_draw(mArea.get());
}

// Lays a little of the new picture over the last frame, which the window keeps: a third of the work of
// drawing both pictures in a buffer and copying that. The last frame is the new picture itself.
void CrossFade::blend(double progress) {
    if (mProgress == 1) return;
    const auto alpha = static_cast<int>(std::lround(255 * (progress - mProgress) / (1 - mProgress)));
    if (alpha < kMinAlpha) return;
    CairoRef cairo(cairo_create(mOnScreen.get()));
    cairo_set_source_surface(cairo.get(), mAfter.get(), 0, 0);
    cairo_paint_with_alpha(cairo.get(), alpha / 255.0);
    mProgress = alpha < 255 ? mProgress + (1 - mProgress) * alpha / 255 : 1;
    cairo_surface_flush(mOnScreen.get());
    gdk_display_sync(gtk_widget_get_display(mArea.get()));  // frames must not queue up in the X server
    ++mFrames;
}

void CrossFade::draw(cairo_t* cairo) const {
    cairo_set_source_surface(cairo, mBefore.get(), 0, 0);
    cairo_set_operator(cairo, CAIRO_OPERATOR_SOURCE);
    cairo_paint(cairo);
    if (!mAfter) return;
    cairo_set_source_surface(cairo, mAfter.get(), 0, 0);
    cairo_set_operator(cairo, CAIRO_OPERATOR_OVER);
    cairo_paint_with_alpha(cairo, mProgress);
}

}  // namespace platform
