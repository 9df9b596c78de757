#pragma once

#include <gtk/gtk.h>

#include "platform/linux/desktop/CairoHandles.h"

namespace platform {

// A picture of a widget, and another that fades in over it.
class CrossFade {
  public:
    CrossFade(GtkWidget* area, SurfaceRef before, double seconds);
    CrossFade(const CrossFade&) = delete;
    CrossFade& operator=(const CrossFade&) = delete;

    // Runs the main loop and advances with the widget's frames. Returns when the fade is over or given up,
    // the widget is no longer shown, or the main loop stops.
    void run(SurfaceRef after);
    void giveUp() { mIsOver = true; }

    void draw(cairo_t* cairo) const;
    int frames() const { return mFrames; }

  private:
    void advance(gint64 frameTime);

    ObjectRef<GtkWidget> mArea;
    SurfaceRef mBefore, mAfter;
    double mSeconds;
    gint64 mStart = 0;  // microseconds; 0 until the first frame
    double mProgress = 0;
    int mFrames = 0;
    bool mIsOver = false;
};

}  // namespace platform
