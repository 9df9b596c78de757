#pragma once

#include <X11/Xlib.h>

namespace platform {

// Whether no other client of the X server has grabbed the keyboard. Keeps no grab itself.
inline bool canGrabKeyboard(Display* server) {
    const int status =
        XGrabKeyboard(server, DefaultRootWindow(server), False, GrabModeAsync, GrabModeAsync, CurrentTime);
    XUngrabKeyboard(server, CurrentTime);
    XSync(server, False);
    return status == GrabSuccess;
}

}  // namespace platform
