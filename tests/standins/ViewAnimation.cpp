#include "tests/standins/ViewAnimation.h"

#include <utility>

#include "platform/View.h"

using standins::fades;

namespace platform {

ViewAnimation::ViewAnimation(std::vector<ViewAnimationDescription> descriptions)
    : mDescriptions(std::move(descriptions)) {
    ++fades().alive;
}

ViewAnimation::~ViewAnimation() { --fades().alive; }

void ViewAnimation::setAnimationBlockingMode(int mode) { mBlockingMode = mode; }
void ViewAnimation::setDuration(double seconds) { mDuration = seconds; }

void ViewAnimation::startAnimation() {
    fades().started.push_back({mDescriptions, mDuration, mBlockingMode});
    for (const ViewAnimationDescription& each : mDescriptions)
        each.target->setHidden(each.effect == NSViewAnimationFadeOutEffect);
}

void ViewAnimation::stopAnimation() { ++fades().stopped; }

}  // namespace platform
