#pragma once

#include <gtk/gtk.h>

namespace platform {

// A window, not yet realized, that covers everything on the monitor, panels included: a layer of a Wayland
// compositor that has them, a window that no X11 window manager touches, else a full-screen window.
GtkWidget* createCoverWindow(GdkMonitor* monitor);

// Gives a cover window on the screen the keyboard, where the desktop does not by itself. Without a grab, so
// lockers still work.
void takeFocus(GtkWidget* window);

// Calls action on each key, button, scroll or touch, and once the pointer has really moved.
void onAnyInput(GtkWidget* window, void (*action)());

}  // namespace platform
