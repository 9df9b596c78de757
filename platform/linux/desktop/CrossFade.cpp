#include "platform/linux/desktop/CrossFade.h"

#include <utility>

#include "platform/RunLoop.h"

namespace platform {

namespace {

constexpr int kGracePeriod = 500;  // milliseconds past the fade's end, in case the widget gets no frames

}  // namespace

CrossFade::CrossFade(GtkWidget* area, SurfaceRef before, double seconds)
    : mArea(static_cast<GtkWidget*>(g_object_ref(area))), mBefore(std::move(before)), mSeconds(seconds) {}

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
    mProgress = mSeconds > 0 ? static_cast<double>(frameTime - mStart) / (mSeconds * G_USEC_PER_SEC) : 1;
    mIsOver = mIsOver || mProgress >= 1;
    ++mFrames;
    gtk_widget_queue_draw(mArea.get());
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
