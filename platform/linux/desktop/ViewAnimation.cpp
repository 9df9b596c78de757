#include "platform/ViewAnimation.h"

#include <utility>

#include "platform/linux/desktop/Window.h"
#include "platform/portable/View.h"

namespace platform {

namespace {

void applyEffects(const std::vector<ViewAnimationDescription>& descriptions) {
    for (const auto& each : descriptions) {
        each.target->setHidden(each.effect == ViewAnimationEffect::FadeOut);
        if (!(each.target->frame() == each.endFrame)) each.target->setFrame(each.endFrame);
    }
}

}  // namespace

ViewAnimation::ViewAnimation(std::vector<ViewAnimationDescription> descriptions)
    : mDescriptions(std::move(descriptions)) {}

ViewAnimation::~ViewAnimation() = default;

void ViewAnimation::setAnimationBlockingMode(int) {}

void ViewAnimation::setDuration(double seconds) { mDuration = seconds; }

void ViewAnimation::startAnimation() {
    const auto apply = [this] { applyEffects(mDescriptions); };
    Window* window = mDescriptions.empty() ? nullptr : mDescriptions.front().target->window();
    if (!window) return apply();
    window->crossFade(mDuration, apply);
}

// A blocking animation is already over when startAnimation returns.
void ViewAnimation::stopAnimation() {}

}  // namespace platform
