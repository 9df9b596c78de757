#pragma once

#include <vector>

#include "platform/portable/Geometry.h"

namespace platform {

class View;

enum class ViewAnimationEffect { FadeIn, FadeOut };
inline constexpr auto NSViewAnimationFadeInEffect = ViewAnimationEffect::FadeIn;
inline constexpr auto NSViewAnimationFadeOutEffect = ViewAnimationEffect::FadeOut;

inline constexpr int NSAnimationBlocking = 0;

struct ViewAnimationDescription {
    View* target;
    Rect endFrame;
    ViewAnimationEffect effect;
};

// Fades views of one window in and out. A view faded in becomes visible, one faded out is hidden at the end.
class ViewAnimation {
  public:
    static constexpr double kDefaultDuration = 0.5;  // seconds

    explicit ViewAnimation(std::vector<ViewAnimationDescription> descriptions);
    ~ViewAnimation();
    ViewAnimation(const ViewAnimation&) = delete;
    ViewAnimation& operator=(const ViewAnimation&) = delete;

    // Blocking is the only mode: startAnimation returns when the fade is over.
    void setAnimationBlockingMode(int mode);
    void setDuration(double seconds);
    void startAnimation();
    void stopAnimation();

  private:
    std::vector<ViewAnimationDescription> mDescriptions;
    double mDuration = kDefaultDuration;
};

}  // namespace platform
