#include "platform/linux/desktop/KeyboardFocus.h"

#include <gdk/gdkx.h>

#include "platform/RunLoop.h"
#include "platform/linux/CurrentDesktop.h"
#include "platform/linux/KeyboardGrab.h"

namespace platform {

namespace {

constexpr int kPatience = 1000, kPause = 50;  // milliseconds

// The display's connection to an X server, null for another kind of display.
::Display* connection() {
    GdkDisplay* display = gdk_display_get_default();
    return GDK_IS_X11_DISPLAY(display) ? GDK_DISPLAY_XDISPLAY(display) : nullptr;
}

GtkWidget* openInvisibleWindow() {
    GtkWidget* window = gtk_window_new(GTK_WINDOW_TOPLEVEL);
    gtk_window_set_decorated(GTK_WINDOW(window), FALSE);
    gtk_window_set_default_size(GTK_WINDOW(window), 1, 1);
    gtk_widget_set_visual(window, gdk_screen_get_rgba_visual(gtk_widget_get_screen(window)));
    gtk_widget_set_app_paintable(window, TRUE);
    gtk_widget_show(window);
    return window;
}

}  // namespace

bool keyboardIsTaken() {
    ::Display* const server = connection();
    if (!server) return false;
    for (int waited = 0; !canGrabKeyboard(server); waited += kPause) {
        if (waited >= kPatience || RunLoop::isStopping()) return true;
        RunLoop::runFor(kPause);
    }
    return false;
}

FocusKeeper::FocusKeeper() {
    if (::Display* const server = connection()) XGetInputFocus(server, &mWindow, &mRevert);
}

FocusKeeper::~FocusKeeper() {
    if (mWindow != None) setFocus();
    if (!mLastWindow) return;
    RunLoop::finish([this] { return gtk_window_is_active(GTK_WINDOW(mLastWindow)); }, kPatience);
    gtk_widget_destroy(mLastWindow);
    gdk_display_flush(gdk_display_get_default());
}

void FocusKeeper::giveBack(bool windowsAreComing) {
    if (mWindow != None) return setFocus();
    // GNOME Shell passes the focus from a window that goes to one that is still coming, and from that to no
    // window at all. So an invisible window takes it, and goes when all others have gone.
    if (windowsAreComing && !connection() && currentDesktopIs("GNOME")) mLastWindow = openInvisibleWindow();
}

void FocusKeeper::setFocus() const {
    GdkDisplay* display = gdk_display_get_default();
    gdk_x11_display_error_trap_push(display);
    XSetInputFocus(connection(), mWindow, mRevert, CurrentTime);
    XSync(connection(), False);
    gdk_x11_display_error_trap_pop_ignored(display);  // the window may be gone
}

}  // namespace platform
