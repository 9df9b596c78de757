#include "program/Presentation.h"

#include <algorithm>
#include <string>
#include <utility>

#include "platform/Log.h"
#include "platform/WebView.h"
#include "platform/portable/NotificationCenter.h"
#include "program/AnimationTimer.h"
#include "program/CoverTask.h"
#include "program/Options.h"
#include "program/QuakeDigest.h"
#include "program/WaitingView.h"
#include "saver/TellmarScreenSaverView.h"

namespace {

// A window that waits off the screen for its first map ticks this often, once both views have a page.
constexpr double kHiddenInterval = 0.25;  // seconds
constexpr int kFirstPages = 2;

}  // namespace

Presentation::Presentation(std::unique_ptr<platform::Window> window, const Options& options)
    : mWindow(std::move(window)),
      mIsPreview(options.preview || mWindow->isThumbnail()),
      mSpeed(options.speed) {
    // Only ticks paint a preview, so each size needs one.
    if (mIsPreview) mWindow->setResizeHandler([this] { mWindow->tick(); });
    platform::NotificationCenter::addObserver(this, platform::WebViewProgressFinishedNotification,
                                              [this] { ++mLoadedPages; });
}

Presentation::~Presentation() { platform::NotificationCenter::removeObserver(this); }

void Presentation::showWaitingView() {
    mWindow->setContentView(makeWaitingView(mIsPreview));
    mWindow->show();
}

bool Presentation::start() {
    auto view = std::make_unique<TellmarScreenSaverView>();
    mView = view.get();
    const platform::Size size = mWindow->size();
    if (!view->initWithFrame({0, 0, size.width, size.height}, mIsPreview)) return false;
    mWindow->setContentView(std::move(view));
    mView->startAnimation();

    mWindow->setLongestFade(interval(mSpeed) / 2);
    const double firstInterval = isSuccessor() ? kHiddenInterval : interval(std::max(mSpeed, 1.0));
    mTimer = std::make_unique<AnimationTimer>(firstInterval, [this] { tick(); });
    if (mIsPreview) tick();
    return true;
}

void Presentation::stop() { mView->stopAnimation(); }

double Presentation::interval(double speed) const { return mView->animationTimeInterval() / speed; }

// A speed below 1 shows each earthquake for longer, but not the splash.
void Presentation::tick() {
    if (!mView->isAnimating() || (isSuccessor() && mLoadedPages < kFirstPages)) return;
    platform::trace("tick " + std::to_string(++mTicks));
    mWindow->tick();
    if (mView->mode() != TellmarScreenSaverView::Mode::Cycling) return;
    mTimer->setInterval(interval(mSpeed));
    if (!std::exchange(mShowsMaps, true) && coversMonitor()) reportFirstMap();
}

void Presentation::reportFirstMap() {
    if (isSuccessor()) mWindow->show();
    reportQuakes(quakeDigest());
}
