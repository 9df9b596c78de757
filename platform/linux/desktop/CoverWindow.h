#pragma once

#include <gtk/gtk.h>

namespace platform {

// A window, not yet realized, that covers everything on the monitor, panels included: a layer of a Wayland
// compositor that has them, a window that no X11 window manager touches, else a full-screen window. On the
// screen it takes the keyboard (a layer only if it is to), but without a grab, so lockers still work.
GtkWidget* createCoverWindow(GdkMonitor* monitor, bool takesKeyboard);

// Calls action on each key, button, scroll or touch, and once the pointer has really moved.
void onAnyInput(GtkWidget* window, void (*action)());

}  // namespace platform
