#pragma once

#include <memory>
#include <vector>

#include "platform/portable/Geometry.h"

namespace platform {

class Canvas;
class Window;

// A rectangle in a tree of views, drawn from the root down and from the first subview to the last. A view
// owns its subviews; the root belongs to whoever created it.
class View {
  public:
    View() = default;
    virtual ~View() = default;
    View(const View&) = delete;
    View& operator=(const View&) = delete;

    // Returns this view, or null when frame is not a rectangle (not finite, or of negative size).
    View* initWithFrame(const Rect& frame);

    const Rect& frame() const { return mFrame; }
    Rect bounds() const { return {0, 0, mFrame.width, mFrame.height}; }
    // Subviews keep their distance from every edge: they grow and shrink with this view.
    void setFrame(const Rect& frame);

    View* superview() const { return mSuperview; }
    const std::vector<std::unique_ptr<View>>& subviews() const { return mSubviews; }
    void addSubview(std::unique_ptr<View> view);

    bool isHidden() const { return mHidden; }
    void setHidden(bool hidden);

    // Draws the part of the view inside rect on canvas().
    virtual void drawRect(const Rect&) {}
    // Called after the frame or the visibility of this view changed, for views backed by something else.
    virtual void frameChanged() {}
    // Called by the window after each fade, with whether this view can be seen now.
    virtual void fadeEnded(bool /*isVisible*/) {}

    // The window that shows the tree, or null. The window sets it at the root, and outlives the root.
    Window* window() const;
    void setWindow(Window* window) { mWindow = window; }

    // Lends a canvas for the duration of a draw; null takes it back.
    void setCanvas(Canvas* canvas) { mCanvas = canvas; }

  protected:
    // Where to draw. Valid only while the platform has lent one.
    Canvas& canvas() { return *mCanvas; }

  private:
    Rect mFrame;
    bool mHidden = false;
    View* mSuperview = nullptr;
    std::vector<std::unique_ptr<View>> mSubviews;
    Window* mWindow = nullptr;
    Canvas* mCanvas = nullptr;
};

}  // namespace platform
