#include "saver/TellmarScreenSaverView.h"

#include <cstddef>
#include <utility>

#include "mappages/SingleQuakeView.h"
#include "platform/Alert.h"
#include "platform/Bundle.h"
#include "platform/Canvas.h"
#include "platform/Log.h"
#include "platform/ScreenSaverDefaults.h"
#include "saver/Acknowledgement.h"
#include "saver/InitialView.h"

namespace {

constexpr double kTickInterval = 15.0;  // seconds
constexpr std::int32_t kDisplayForSec = 15;
constexpr double kSplashFadeDuration = 1.0;  // seconds

constexpr char kDisplayTimeKey[] = "DisplayQuakeForNSeconds";
constexpr std::int32_t kDefaultDisplayTime = 5;  // seconds
// The further right the rate slider, the shorter each quake is shown.
constexpr std::int32_t kRateSliderOrigin = 350;

constexpr char kPreviewImageName[] = "google_maps_nz_pre.png";

}  // namespace

TellmarScreenSaverView* TellmarScreenSaverView::initWithFrame(const platform::Rect& frame, bool isPreview) {
    if (!ScreenSaverView::initWithFrame(frame, isPreview)) return nullptr;
    getSaverDefaults();
    mDisplayForSec = kDisplayForSec;  // the sheet edits the stored time, but the display does not use it
    setAnimationTimeInterval(kTickInterval);
    addQuakeView();
    addQuakeView();
    addInitialView();
    mAnimation.reset();
    mVisibleViewIndex = 1;
    mMode = Mode::Splash;
    return this;
}

void TellmarScreenSaverView::addQuakeView() {
    auto owned = std::make_unique<SingleQuakeView>();
    SingleQuakeView* const view = owned.get();
    view->initWithFrame(bounds());
    addSubview(std::move(owned));
    view->loadNextPage();
    view->setHidden(true);
}

void TellmarScreenSaverView::addInitialView() {
    auto owned = std::make_unique<InitialView>();
    mInitialView = owned.get();
    mInitialView->initWithFrame(bounds());
    addSubview(std::move(owned));
}

SingleQuakeView* TellmarScreenSaverView::quakeView(std::int32_t index) const {
    return static_cast<SingleQuakeView*>(subviews()[static_cast<std::size_t>(index)].get());
}

void TellmarScreenSaverView::startAnimation() { ScreenSaverView::startAnimation(); }

void TellmarScreenSaverView::stopAnimation() { ScreenSaverView::stopAnimation(); }

void TellmarScreenSaverView::animateOneFrame() {
    if (isPreview()) return drawPreviewNotice();
    if (mAnimation) mAnimation->stopAnimation();
    mAnimation.reset();
    if (mMode == Mode::Cycling)
        drawBlendingWebViews();
    else
        drawInitialView();
}

void TellmarScreenSaverView::addView(platform::View* view,
                                     std::vector<platform::ViewAnimationDescription>& animations,
                                     platform::ViewAnimationEffect effect) const {
    animations.push_back({view, view->frame(), effect});
}

void TellmarScreenSaverView::drawInitialView() {
    SingleQuakeView* const incoming = quakeView(mVisibleViewIndex);
    if (!incoming->pageIsComplete()) return;
    mMode = mMode == Mode::Splash ? Mode::PageSeen : Mode::Cycling;
    if (mMode != Mode::Cycling) return;

    std::vector<platform::ViewAnimationDescription> animations;
    addView(incoming, animations, platform::NSViewAnimationFadeInEffect);
    addView(mInitialView, animations, platform::NSViewAnimationFadeOutEffect);
    mAnimation = std::make_unique<platform::ViewAnimation>(std::move(animations));
    mAnimation->setAnimationBlockingMode(platform::NSAnimationBlocking);
    mAnimation->setDuration(kSplashFadeDuration);
    mAnimation->startAnimation();
    mVisibleViewIndex = 1 - mVisibleViewIndex;
}

void TellmarScreenSaverView::drawBlendingWebViews() {
    SingleQuakeView* const incoming = quakeView(mVisibleViewIndex);
    SingleQuakeView* const outgoing = quakeView(1 - mVisibleViewIndex);

    std::vector<platform::ViewAnimationDescription> animations;
    addView(incoming, animations, platform::NSViewAnimationFadeInEffect);
    addView(outgoing, animations, platform::NSViewAnimationFadeOutEffect);
    mAnimation = std::make_unique<platform::ViewAnimation>(std::move(animations));
    mAnimation->setAnimationBlockingMode(platform::NSAnimationBlocking);
    mAnimation->startAnimation();

    outgoing->loadNextPage();
    mVisibleViewIndex = 1 - mVisibleViewIndex;
}

void TellmarScreenSaverView::drawPreviewImage() {
    platform::Image* const image = canvas().loadImage(platform::pathForResource(kPreviewImageName));
    if (image) canvas().drawImageInRect(image, bounds(), platform::CompositingOperation::Copy, 1.0);
}

void TellmarScreenSaverView::drawPreviewNotice() {
    drawPreviewImage();
    const platform::TextAttributes attributes{.fontName = "Arial",
                                              .fontSize = 9.0,
                                              .foreground = platform::Color::gray(0.0, 0.75),
                                              .strokeWidth = -1.5};
    canvas().drawTextInRect(kAcknowledgement, platform::insetRect(bounds(), 7.5, 2.0), attributes);
}

void TellmarScreenSaverView::getSaverDefaults() {
    mBundleID = platform::bundleIdentifier();
    auto defaults = platform::ScreenSaverDefaults::defaultsForModuleWithName(mBundleID);
    mDisplayForSec = defaults.integerForKey(kDisplayTimeKey);
    if (mDisplayForSec != 0) return;
    mDisplayForSec = kDefaultDisplayTime;
    defaults.setInteger(mDisplayForSec, kDisplayTimeKey);
    defaults.synchronize();
}

bool TellmarScreenSaverView::hasConfigureSheet() { return false; }

platform::Panel* TellmarScreenSaverView::configureSheet() {
    if (mConfigPanel) return mConfigPanel;
    const bool isLoaded = platform::loadNibNamed(
        "ConfigPanel", {mConfigPanel, mZoomSlider, mRateSlider, mOKButton, mCancelButton,
                        [this](platform::Button* sender) { closeSheetSave(sender); },
                        [this](platform::Button* sender) { closeSheetCancel(sender); }});
    if (!isLoaded) {
        platform::log("Failed to load config panel!");
        platform::beep();
    }
    return mConfigPanel;
}

void TellmarScreenSaverView::closeSheetSave(platform::Button*) {
    auto defaults = platform::ScreenSaverDefaults::defaultsForModuleWithName(mBundleID);
    mDisplayForSec = kRateSliderOrigin - platform::intValue(mRateSlider);
    defaults.setInteger(mDisplayForSec, kDisplayTimeKey);
    defaults.synchronize();
    platform::endSheet(mConfigPanel);
}

void TellmarScreenSaverView::closeSheetCancel(platform::Button*) { platform::endSheet(mConfigPanel); }
