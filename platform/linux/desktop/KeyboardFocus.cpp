#include "platform/linux/desktop/KeyboardFocus.h"

#include <gdk/gdkx.h>

#include "platform/RunLoop.h"
#include "platform/linux/KeyboardGrab.h"

namespace platform {

namespace {

constexpr int kPatience = 1000, kPause = 50;  // milliseconds

// The display's connection to an X server, null for another kind of display.
::Display* connection() {
    GdkDisplay* display = gdk_display_get_default();
    return GDK_IS_X11_DISPLAY(display) ? GDK_DISPLAY_XDISPLAY(display) : nullptr;
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

FocusKeeper::~FocusKeeper() { giveBack(); }

void FocusKeeper::giveBack() const {
    if (mWindow == None) return;
    GdkDisplay* display = gdk_display_get_default();
    gdk_x11_display_error_trap_push(display);
    XSetInputFocus(connection(), mWindow, mRevert, CurrentTime);
    XSync(connection(), False);
    gdk_x11_display_error_trap_pop_ignored(display);  // the window may be gone
}

}  // namespace platform
