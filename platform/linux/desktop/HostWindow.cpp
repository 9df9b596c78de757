#include "platform/linux/desktop/HostWindow.h"

#include <X11/Xatom.h>
#include <gdk/gdkx.h>

#include "platform/RunLoop.h"
#include "platform/linux/desktop/Monitors.h"

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

// None when the window is gone.
XID parentOf(Display* display, XID window) {
    XID root = None, parent = None, *children = nullptr;
    unsigned count = 0;
    if (XQueryTree(display, window, &root, &parent, &children, &count) && children) XFree(children);
    return parent;
}

// Some window managers put all windows into one of their own, which names itself as the root to use.
bool isVirtualRoot(Display* display, XID window) {
    Atom type = None;
    int format = 0;
    unsigned long count = 0, rest = 0;
    unsigned char* value = nullptr;
    XGetWindowProperty(display, window, XInternAtom(display, "__SWM_VROOT", False), 0, 1, False, XA_WINDOW,
                       &type, &format, &count, &rest, &value);
    const bool isNamed = type == XA_WINDOW && count == 1 && *reinterpret_cast<XID*>(value) == window;
    if (value) XFree(value);
    return isNamed;
}

bool isInAnotherWindow(GdkWindow* window) {
    Display* const display = gdk_x11_display_get_xdisplay(gdk_window_get_display(window));
    const XID parent = parentOf(display, gdk_x11_window_get_xid(window));
    return parent != None && parent != gdk_x11_get_default_root_xwindow() && !isVirtualRoot(display, parent);
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

// A host can lay a window that covers a monitor into another: mate-screensaver does.
bool isPreviewWindow(GdkWindow* host) {
    const GdkRectangle monitor =
        areaOf(gdk_display_get_monitor_at_window(gdk_window_get_display(host), host));
    const int width = gdk_window_get_width(host), height = gdk_window_get_height(host);
    const bool isSmall = 2 * width < monitor.width && 2 * height < monitor.height;
    const bool coversMonitor = width >= monitor.width && height >= monitor.height;
    return isSmall || (!coversMonitor && isInAnotherWindow(host));
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
