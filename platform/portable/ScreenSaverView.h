#pragma once

#include "platform/portable/View.h"

namespace platform {

class Panel;

// Base class of a module's principal view. The host calls animateOneFrame once every animationTimeInterval
// while the view is animating.
class ScreenSaverView : public View {
  public:
    // Returns this view, or null where View::initWithFrame does.
    ScreenSaverView* initWithFrame(const Rect& frame, bool isPreview);

    bool isPreview() const { return mIsPreview; }
    bool isAnimating() const { return mIsAnimating; }
    double animationTimeInterval() const { return mAnimationTimeInterval; }
    void setAnimationTimeInterval(double seconds) { mAnimationTimeInterval = seconds; }

    virtual void startAnimation() { mIsAnimating = true; }
    virtual void stopAnimation() { mIsAnimating = false; }
    // One tick. canvas() paints over the subviews while it runs; only a preview's painting is shown.
    virtual void animateOneFrame() {}

    virtual bool hasConfigureSheet() { return false; }
    virtual Panel* configureSheet() { return nullptr; }

  private:
    bool mIsPreview = false;
    bool mIsAnimating = false;
    double mAnimationTimeInterval = 1.0 / 30;
};

}  // namespace platform
