#pragma once

#include <gtk/gtk.h>

#include <functional>
#include <limits>
#include <memory>
#include <string>

#include "platform/linux/desktop/CairoHandles.h"
#include "platform/portable/ScreenSaverView.h"

namespace platform {

class CrossFade;

// A window that shows a tree of views and no GTK widgets: a top-level window of our own, or one inside a
// screen-saver host's window. When the user or the host closes it, the main loop stops.
class Window {
  public:
    // Each makes a window that is not on the screen yet, or returns null on failure, after writing one line
    // to stderr that says why.
    static std::unique_ptr<Window> open(const Size& size);
    // Covers everything on the monitor; any input calls endAll.
    static std::unique_ptr<Window> cover(GdkMonitor* monitor, void (*endAll)());
    // The same, but only Escape or q calls endAll, and the screen stays on.
    static std::unique_ptr<Window> coverAsKiosk(GdkMonitor* monitor, void (*endAll)());
    static std::unique_ptr<Window> embed(unsigned long hostWindow);
    ~Window();
    Window(const Window&) = delete;
    Window& operator=(const Window&) = delete;

    // The window that alerts may use; null when there is none.
    static Window* current();

    // Gives a window that is not to be shown yet the size that it will have.
    void layOut(const Size& size);
    // Brings the window, which has a content view by then, to the screen. Returns when its first picture is
    // there and its size is known, or after a second.
    void show();

    Size size() const;
    // Whether a dialog can appear above it and be answered.
    bool takesDialogs() const { return mTakesDialogs; }
    // Whether it lies in a host's settings.
    bool isThumbnail() const;

    // Shows root and keeps it as large as the window.
    void setContentView(std::unique_ptr<ScreenSaverView> root);
    // The handler is called after the window and its views were resized.
    void setResizeHandler(std::function<void()> handler) { mResizeHandler = std::move(handler); }

    // Runs one tick of the root. What a preview paints in it stays on top of its subviews.
    void tick();

    void setNeedsDisplay();
    // The same for a part of one of its views, counted from the view's upper left corner.
    void setNeedsDisplay(const View& view, const GdkRectangle& part);

    // Limits all fades from now on: ticks that come faster than usual need shorter ones.
    void setLongestFade(double seconds) { mLongestFade = seconds; }
    // Shows the change that applyChange makes as a fade of at most that many seconds. Returns when it is over
    // or given up.
    void crossFade(double seconds, const std::function<void()>& applyChange);

    // Shows both texts for that long on a panel over everything, for windows that take no dialogs.
    void showNotice(const std::string& text, const std::string& explanation, double seconds);

    GtkWindow* gtkWindow() { return GTK_WINDOW(mTopLevel); }

  private:
    Window(GtkWidget* topLevel, bool takesDialogs);
    void connectSignals();
    void fillHost(GdkWindow* host);
    void resized();
    void draw(cairo_t* cairo);
    void drawContent(cairo_t* cairo);
    SurfaceRef makeSurface(cairo_content_t content) const;
    SurfaceRef snapshot();

    GtkWidget* mTopLevel;  // owned, destroyed with this
    GtkWidget* mArea;      // owned by mTopLevel
    ObjectRef<GdkWindow> mHost;
    bool mTakesDialogs;  // and shows the cursor
    bool mIsPainted = false;
    std::unique_ptr<ScreenSaverView> mRoot;
    std::function<void()> mResizeHandler;
    SurfaceRef mPreviewPainting;
    std::unique_ptr<CrossFade> mFade;
    bool mHasChanged = false;                                       // during a fade
    double mLongestFade = std::numeric_limits<double>::infinity();  // seconds
    std::string mNotice;
};

}  // namespace platform
