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

// A window that shows a tree of views and nothing of GTK's own: one of ours, or one inside a window that a
// screen-saver host gave. Its end, by the user or the host, stops the main loop.
class Window {
  public:
    // Each returns null when there is no such window to be had, with one line on stderr that says why.
    static std::unique_ptr<Window> open(const Size& size, bool fullscreen);
    // Over everything on the monitor, for a Wayland compositor with layers; input calls endAll.
    static std::unique_ptr<Window> cover(GdkMonitor* monitor, void (*endAll)());
    static std::unique_ptr<Window> embed(unsigned long hostWindow);
    ~Window();
    Window(const Window&) = delete;
    Window& operator=(const Window&) = delete;

    // The window that alerts may use; null when there is none.
    static Window* current();

    Size size() const;
    bool isEmbedded() const { return mHost != nullptr; }
    // Whether a dialog can lie above it and be answered.
    bool takesDialogs() const { return mTakesDialogs; }
    // Smaller than half its monitor both ways: a host's settings dialog shows such a window.
    bool isThumbnail() const;

    // Shows root and keeps it as large as the window.
    void setContentView(std::unique_ptr<ScreenSaverView> root);
    // Called after the window and its views changed their size.
    void setResizeHandler(std::function<void()> handler) { mResizeHandler = std::move(handler); }

    // Lets the root run one tick; what a preview paints meanwhile lies over its subviews from then on.
    void tick();

    void setNeedsDisplay();

    // No fade takes longer from now on: ticks that come faster than usual need shorter ones.
    void setLongestFade(double seconds) { mLongestFade = seconds; }
    // Shows the change that applyChange makes as a fade of so many seconds at most. Returns when it is over
    // or given up.
    void crossFade(double seconds, const std::function<void()>& applyChange);

    // A panel with both texts, drawn over everything, for a while: for windows that take no dialogs.
    void showNotice(const std::string& text, const std::string& explanation, double seconds);

    GtkWindow* gtkWindow() { return GTK_WINDOW(mTopLevel); }

  private:
    Window(GtkWidget* topLevel, bool takesDialogs);
    void connectSignals();
    void fillHost(GdkWindow* host);
    void show(bool withoutCursor);
    void resized();
    void draw(cairo_t* cairo);
    void drawContent(cairo_t* cairo);
    SurfaceRef makeSurface(cairo_content_t content) const;
    SurfaceRef snapshot();

    GtkWidget* mTopLevel;  // owned, destroyed with this
    GtkWidget* mArea;      // owned by mTopLevel
    ObjectRef<GdkWindow> mHost;
    bool mTakesDialogs;
    bool mIsPainted = false;
    std::unique_ptr<ScreenSaverView> mRoot;
    std::function<void()> mResizeHandler;
    SurfaceRef mPreviewPainting;
    std::unique_ptr<CrossFade> mFade;
    double mLongestFade = std::numeric_limits<double>::infinity();  // seconds
    std::string mNotice;
};

}  // namespace platform
