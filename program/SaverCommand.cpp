#include "program/SaverCommand.h"

#include <glib-unix.h>
#include <gtk/gtk.h>
#include <sys/resource.h>

#include <algorithm>
#include <cerrno>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "platform/ConfigPanel.h"
#include "platform/Log.h"
#include "platform/RunLoop.h"
#include "platform/WebView.h"
#include "platform/linux/desktop/GraphicsDrivers.h"
#include "platform/linux/desktop/Window.h"
#include "platform/portable/NotificationCenter.h"
#include "program/AnimationTimer.h"
#include "program/CoverTask.h"
#include "program/Covers.h"
#include "program/Options.h"
#include "program/QuakeDigest.h"
#include "program/Restart.h"
#include "program/WaitingView.h"
#include "quakes/CQuakeList.h"
#include "saver/TellmarScreenSaverView.h"
#include "service/EventFeed.h"

using platform::RunLoop;
using platform::Window;

namespace {

constexpr platform::Size kWindowSize{1280, 720};
// A window that waits off the screen for its first map ticks this often, once both views have a page.
constexpr double kHiddenInterval = 0.25;  // seconds
constexpr int kFirstPages = 2;
constexpr platform::Size kPreviewSize{565, 317};  // as in XScreenSaver's settings dialog

bool openDisplay(bool forHostWindow) {
    // A host's window is an X11 window, even when a Wayland display is available.
    if (forHostWindow) gdk_set_allowed_backends("x11");
    platform::keepGraphicsDriversOut();
    gtk_disable_setlocale();
    if (gtk_init_check(nullptr, nullptr)) return true;
    platform::log("cannot open a display");
    return false;
}

// Not every host lowers the priority of its savers. Processes started by this one inherit it.
void beNice() {
    constexpr int kNiceness = 10;  // the same as XScreenSaver's
    errno = 0;
    const int now = getpriority(PRIO_PROCESS, 0);
    if (errno == 0 && now < kNiceness) setpriority(PRIO_PROCESS, 0, kNiceness);
}

gboolean stop(gpointer) {
    RunLoop::stop();
    return G_SOURCE_CONTINUE;
}

// From now on there is something to clean up. Until then a signal may simply kill the process, which is
// faster than waiting for the display to open.
std::vector<guint> stopOnSignals() {
    std::vector<guint> sources;
    for (const int signal : {SIGTERM, SIGINT, SIGHUP})
        sources.push_back(g_unix_signal_add(signal, stop, nullptr));
    return sources;
}

// From here on a signal simply ends the process, so none is lost.
void startAnew(const std::vector<guint>& signalSources) {
    platform::trace("there is an answer: starting anew");
    for (const guint source : signalSources) g_source_remove(source);
    restartAtExit();
    RunLoop::stop();
}

bool isSuccessor() { return coverTask() == CoverTask::Successor; }

platform::Size sizeOf(GdkMonitor* monitor) {
    GdkRectangle area;
    gdk_monitor_get_geometry(monitor, &area);
    return {static_cast<double>(area.width), static_cast<double>(area.height)};
}

// Null when monitors have changed in the meantime.
std::unique_ptr<Window> openCover(bool isKiosk) {
    GdkMonitor* monitor = monitorToCover();
    if (!monitor) return nullptr;
    auto window = isKiosk ? Window::coverAsKiosk(monitor, endCovers) : Window::cover(monitor, endCovers);
    if (isSuccessor()) window->layOut(sizeOf(monitor));
    return window;
}

std::unique_ptr<Window> openWindow(const Options& options) {
    if (coversMonitor()) return openCover(options.kiosk);
    if (options.hostWindow) return Window::embed(*options.hostWindow);
    return Window::open(options.preview ? kPreviewSize : kWindowSize);
}

// The view in its window, and the ticks.
class Saver {
  public:
    Saver(std::unique_ptr<Window> window, const Options& options)
        : mWindow(std::move(window)),
          mIsPreview(options.preview || mWindow->isThumbnail()),
          mSpeed(options.speed) {
        // Only ticks paint a preview, so each size needs one.
        if (mIsPreview) mWindow->setResizeHandler([this] { mWindow->tick(); });
        platform::NotificationCenter::addObserver(this, platform::WebViewProgressFinishedNotification,
                                                  [this] { ++mLoadedPages; });
    }

    ~Saver() { platform::NotificationCenter::removeObserver(this); }
    Saver(const Saver&) = delete;
    Saver& operator=(const Saver&) = delete;

    // What the view shows at first, on the screen before the feed is fetched.
    void showWaitingView() {
        mWindow->setContentView(makeWaitingView(mIsPreview));
        mWindow->show();
    }

    bool start() {
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

    void stop() { mView->stopAnimation(); }

    bool isPreview() const { return mIsPreview; }

  private:
    double interval(double speed) const { return mView->animationTimeInterval() / speed; }

    // A speed below 1 shows each earthquake for longer, but not the splash.
    void tick() {
        if (!mView->isAnimating() || (isSuccessor() && mLoadedPages < kFirstPages)) return;
        platform::trace("tick " + std::to_string(++mTicks));
        mWindow->tick();
        if (mView->mode() != TellmarScreenSaverView::Mode::Cycling) return;
        mTimer->setInterval(interval(mSpeed));
        if (!std::exchange(mShowsMaps, true) && coversMonitor()) reportFirstMap();
    }

    void reportFirstMap() {
        if (isSuccessor()) mWindow->show();
        reportQuakes(quakeDigest());
    }

    std::unique_ptr<Window> mWindow;
    bool mIsPreview;
    double mSpeed;
    TellmarScreenSaverView* mView = nullptr;  // owned by mWindow
    std::unique_ptr<AnimationTimer> mTimer;
    int mTicks = 0, mLoadedPages = 0;
    bool mShowsMaps = false;
};

}  // namespace

int runSaver(const Options& options, EventFeed& feed) {
    if (options.hostWindow) beNice();
    if (!openDisplay(options.hostWindow.has_value())) return 1;
    const std::vector<guint> signalSources = stopOnSignals();
    if (options.fullscreen && !options.hostWindow && !coversMonitor()) return runCovers(options);
    std::unique_ptr<Window> window = openWindow(options);
    if (!window) return 1;
    Saver saver(std::move(window), options);
    // A process that covers a monitor leaves this to the first one.
    if (!saver.isPreview() && !coversMonitor()) feed.setNewsHandler([&] { startAnew(signalSources); });
    if (!isSuccessor()) saver.showWaitingView();
    // Fetches the feed, while the window goes on to be drawn and to follow its host's.
    CQuakeList::Instance();
    if (RunLoop::isStopping()) return 0;  // a host that has changed its mind is waiting for this
    if (coversMonitor() && quakeDigest().empty()) reportQuakes("");
    if (!saver.start()) return 1;
    RunLoop::run();
    saver.stop();
    return 0;
}

int runSettings() {
    if (!openDisplay(false)) return 1;
    TellmarScreenSaverView view;
    view.getSaverDefaults();
    platform::Panel* panel = view.configureSheet();
    if (!panel) return 1;
    platform::runSheet(panel);
    return 0;
}
