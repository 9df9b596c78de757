#include "tests/standins/ViewAnimation.h"

#include <utility>

#include "platform/View.h"

namespace standins {

Fades& fades() {
    static Fades state;
    return state;
}

}  // namespace standins

namespace platform {

ViewAnimation::ViewAnimation(std::vector<ViewAnimationDescription> descriptions)
    : mDescriptions(std::move(descriptions)) {
    ++standins::fades().alive;
}

ViewAnimation::~ViewAnimation() { --standins::fades().alive; }

void ViewAnimation::setAnimationBlockingMode(int mode) { mBlockingMode = mode; }

void ViewAnimation::setDuration(double seconds) { mDuration = seconds; }

void ViewAnimation::startAnimation() {
    standins::fades().started.push_back({mDescriptions, mDuration, mBlockingMode});
    for (const ViewAnimationDescription& each : mDescriptions)
        each.target->setHidden(each.effect == NSViewAnimationFadeOutEffect);
}

void ViewAnimation::stopAnimation() { ++standins::fades().stopped; }

}  // namespace platform
