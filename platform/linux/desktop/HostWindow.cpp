#include "platform/linux/desktop/HostWindow.h"

#include <gdk/gdkx.h>

#include "platform/RunLoop.h"

namespace platform {

namespace {

std::function<void(const Size&)> follower;

GdkFilterReturn filterHostEvent(GdkXEvent* xevent, GdkEvent*, gpointer host) {
    const auto* event = static_cast<XEvent*>(xevent);
    const auto own = gdk_x11_window_get_xid(static_cast<GdkWindow*>(host));
    if (event->type == DestroyNotify && event->xdestroywindow.window == own) RunLoop::stop();
    if (event->type == ConfigureNotify && event->xconfigure.window == own && follower)
        follower(
            {static_cast<double>(event->xconfigure.width), static_cast<double>(event->xconfigure.height)});
    return GDK_FILTER_CONTINUE;
}

}  // namespace

ObjectRef<GdkWindow> findHostWindow(unsigned long id) {
    GdkDisplay* display = gdk_display_get_default();
    if (!GDK_IS_X11_DISPLAY(display)) return nullptr;
    gdk_x11_display_error_trap_push(display);
    ObjectRef<GdkWindow> window(gdk_x11_window_foreign_new_for_display(display, id));
    // The trap stays: the host may destroy its window, and ours in it, between any two of our requests.
    if (!window) gdk_x11_display_error_trap_pop_ignored(display);
    return window;
}

void followHostWindow(GdkWindow* host, std::function<void(const Size&)> resize) {
    follower = std::move(resize);
    gdk_window_add_filter(host, filterHostEvent, host);
    GdkDisplay* display = gdk_window_get_display(host);
    gdk_x11_display_error_trap_push(display);
    gdk_window_set_events(host, GDK_STRUCTURE_MASK);
    // A window that is already gone sends no event.
    if (gdk_x11_display_error_trap_pop(display) != 0) RunLoop::stop();
    follower(
        {static_cast<double>(gdk_window_get_width(host)), static_cast<double>(gdk_window_get_height(host))});
}

void forgetHostWindow(GdkWindow* host) {
    gdk_window_remove_filter(host, filterHostEvent, host);
    follower = nullptr;
    gdk_x11_display_error_trap_pop_ignored(gdk_window_get_display(host));
}

}  // namespace platform
