#include "platform/portable/ScreenSaverView.h"

namespace platform {

ScreenSaverView* ScreenSaverView::initWithFrame(const Rect& frame, bool isPreview) {
    if (!View::initWithFrame(frame)) return nullptr;
    mIsPreview = isPreview;
    return this;
}

}  // namespace platform
