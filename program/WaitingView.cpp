#include "program/WaitingView.h"

#include <utility>

#include "saver/InitialView.h"
#include "saver/TellmarScreenSaverView.h"

using platform::ScreenSaverView;

namespace {

std::unique_ptr<ScreenSaverView> makeSplash() {
    auto root = std::make_unique<ScreenSaverView>();
    root->initWithFrame({}, false);
    auto splash = std::make_unique<InitialView>();
    splash->initWithFrame({});
    root->addSubview(std::move(splash));
    return root;
}

// The saver's own view paints previews with nothing but a frame.
std::unique_ptr<ScreenSaverView> makePreview() {
    auto root = std::make_unique<TellmarScreenSaverView>();
    root->ScreenSaverView::initWithFrame({}, true);
    return root;
}

}  // namespace

std::unique_ptr<ScreenSaverView> makeWaitingView(bool isPreview) {
    return isPreview ? makePreview() : makeSplash();
}
