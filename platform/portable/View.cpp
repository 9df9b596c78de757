#include "platform/portable/View.h"

#include <cmath>

namespace platform {

namespace {

bool isRectangle(const Rect& rect) {
    return std::isfinite(rect.x) && std::isfinite(rect.y) && std::isfinite(rect.width) &&
           std::isfinite(rect.height) && rect.width >= 0 && rect.height >= 0;
}

}  // namespace

View* View::initWithFrame(const Rect& frame) {
    if (!isRectangle(frame)) return nullptr;
    mFrame = frame;
    return this;
}

void View::setFrame(const Rect& frame) {
    const double wider = frame.width - mFrame.width;
    const double higher = frame.height - mFrame.height;
    mFrame = frame;
    for (const auto& view : mSubviews) {
        Rect inner = view->frame();
        inner.width += wider;
        inner.height += higher;
        view->setFrame(inner);
    }
    frameChanged();
}

void View::addSubview(std::unique_ptr<View> view) {
    view->mSuperview = this;
    mSubviews.push_back(std::move(view));
}

void View::setHidden(bool hidden) {
    mHidden = hidden;
    frameChanged();
}

Window* View::window() const { return mSuperview ? mSuperview->window() : mWindow; }

}  // namespace platform
