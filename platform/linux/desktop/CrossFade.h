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

    // Draws the frame that is shown now.
    void draw(cairo_t* cairo) const;
    int frames() const { return mFrames; }
    // Whether the screen shows the new picture and nothing of the old one.
    bool isComplete() const { return mOnScreen && mProgress == 1; }

  private:
    void advance(gint64 frameTime);
    void blend(double progress);

    ObjectRef<GtkWidget> mArea;
    SurfaceRef mBefore, mAfter;
    SurfaceRef mOnScreen;  // the window itself; null where frames can only be drawn by draw
    double mSeconds;
    gint64 mStart = 0;     // microseconds; 0 until the first frame
    double mProgress = 0;  // of the frame that is shown
    int mFrames = 0;
    bool mIsOver = false;
};

}  // namespace platform
