#include "program/SaverCommand.h"

#include <glib-unix.h>
#include <gtk/gtk.h>
#include <sys/resource.h>

#include <cerrno>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "platform/ConfigPanel.h"
#include "platform/Log.h"
#include "platform/RunLoop.h"
#include "platform/linux/desktop/GraphicsDrivers.h"
#include "platform/linux/desktop/Monitors.h"
#include "platform/linux/desktop/Window.h"
#include "program/CoverTask.h"
#include "program/Covers.h"
#include "program/Options.h"
#include "program/Presentation.h"
#include "program/QuakeDigest.h"
#include "program/Restart.h"
#include "quakes/CQuakeList.h"
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
void restart(const std::vector<guint>& signalSources) {
    platform::trace("there is an answer: restarting");
    for (const guint source : signalSources) g_source_remove(source);
    restartAtExit();
    RunLoop::stop();
}

platform::Size sizeOf(GdkMonitor* monitor) {
    const GdkRectangle area = platform::areaOf(monitor);
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

}  // namespace

int runSaver(const Options& options, EventFeed& feed) {
    if (options.hostWindow) beNice();
    if (!openDisplay(options.hostWindow.has_value())) return 1;
    const std::vector<guint> signalSources = stopOnSignals();
    if (options.fullscreen && !options.hostWindow && !coversMonitor()) return runCovers(options);
    std::unique_ptr<Window> window = openWindow(options);
    if (!window) return 1;
    Presentation presentation(std::move(window), options);
    // A process that covers a monitor leaves this to the first one.
    if (!presentation.isPreview() && !coversMonitor()) feed.setNewsHandler([&] { restart(signalSources); });
    if (!isSuccessor()) presentation.showWaitingView();
    if (coverTask() == CoverTask::Cover) reportWindow();
    // Fetches the feed, while the window goes on to be drawn and to follow its host's.
    CQuakeList::Instance();
    if (RunLoop::isStopping()) return 0;  // a host that has changed its mind is waiting for this
    if (coversMonitor() && quakeDigest().empty()) reportQuakes("");
    if (!presentation.start()) return 1;
    RunLoop::run();
    presentation.stop();
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
