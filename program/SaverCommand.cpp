#include "program/SaverCommand.h"

#include <glib-unix.h>
#include <gtk/gtk.h>
#include <sys/resource.h>

#include <cerrno>
#include <memory>
#include <string>
#include <vector>

#include "platform/ConfigPanel.h"
#include "platform/Log.h"
#include "platform/RunLoop.h"
#include "platform/linux/desktop/LayerWindow.h"
#include "platform/linux/desktop/Window.h"
#include "program/AnimationTimer.h"
#include "program/Options.h"
#include "program/Overlays.h"
#include "program/Restart.h"
#include "saver/TellmarScreenSaverView.h"
#include "service/EventFeed.h"

using platform::RunLoop;
using platform::Window;

namespace {

constexpr platform::Size kWindowSize{1280, 720};
constexpr platform::Size kPreviewSize{565, 317};  // as in XScreenSaver's settings dialog

bool openDisplay(bool forHostWindow) {
    // A host's window is an X11 window, even when a Wayland display is available.
    if (forHostWindow) gdk_set_allowed_backends("x11");
    // The pages are still pictures: drawn by the CPU they take a third of the memory and look the same
    // everywhere.
    g_setenv("WEBKIT_DISABLE_DMABUF_RENDERER", "1", FALSE);
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

// Null when monitors have changed in the meantime.
std::unique_ptr<Window> openOverlay() {
    GdkMonitor* monitor = overlayMonitor();
    return monitor ? Window::cover(monitor, endOverlays) : nullptr;
}

std::unique_ptr<Window> openWindow(const Options& options) {
    if (isOverlay()) return openOverlay();
    if (options.hostWindow) return Window::embed(*options.hostWindow);
    return Window::open(options.preview ? kPreviewSize : kWindowSize, options.fullscreen);
}

// The view in its window, and the ticks.
class Saver {
  public:
    Saver(std::unique_ptr<Window> window, const Options& options)
        : mWindow(std::move(window)),
          mIsPreview(options.preview || (mWindow->isEmbedded() && mWindow->isThumbnail())),
          mSpeed(options.speed) {}

    bool start() {
        auto view = std::make_unique<TellmarScreenSaverView>();
        mView = view.get();
        const platform::Size size = mWindow->size();
        if (!view->initWithFrame({0, 0, size.width, size.height}, mIsPreview)) return false;
        mWindow->setContentView(std::move(view));
        mView->startAnimation();

        const double interval = mView->animationTimeInterval() / mSpeed;
        mWindow->setLongestFade(interval / 2);
        mTimer = std::make_unique<AnimationTimer>(interval, [this] { tick(); });
        if (mIsPreview) showPreview();
        return true;
    }

    void stop() { mView->stopAnimation(); }

    bool isPreview() const { return mIsPreview; }

  private:
    void tick() {
        if (!mView->isAnimating()) return;
        platform::trace("tick " + std::to_string(++mTicks));
        mWindow->tick();
    }

    // Only ticks paint a preview, so the first one comes at once, and another after each resize.
    void showPreview() {
        tick();
        mWindow->setResizeHandler([this] { tick(); });
    }

    std::unique_ptr<Window> mWindow;
    bool mIsPreview;
    double mSpeed;
    TellmarScreenSaverView* mView = nullptr;  // owned by mWindow
    std::unique_ptr<AnimationTimer> mTimer;
    int mTicks = 0;
};

}  // namespace

int runSaver(const Options& options, EventFeed& feed) {
    if (options.hostWindow) beNice();
    if (!openDisplay(options.hostWindow.has_value())) return 1;
    const std::vector<guint> signalSources = stopOnSignals();
    if (options.fullscreen && !options.hostWindow && !isOverlay() && platform::hasLayers())
        return runOverlays();
    std::unique_ptr<Window> window = openWindow(options);
    if (!window) return 1;
    if (RunLoop::isStopping()) return 0;  // a host that has changed its mind is waiting for this
    Saver saver(std::move(window), options);
    // A process that covers a monitor leaves this to the first one.
    if (!saver.isPreview() && !isOverlay()) feed.setNewsHandler([&] { startAnew(signalSources); });
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
