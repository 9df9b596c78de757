#pragma once

#include <gtk/gtk.h>

namespace platform {

// Whether this is a Wayland compositor that can lay a window over the whole desktop, panels included.
bool hasLayers();

// Lays a window that is not yet realized over everything on the monitor. It takes the keyboard.
void coverAsLayer(GtkWindow* window, GdkMonitor* monitor);

// Calls action on each key, button, scroll or touch, and once the pointer has really moved.
void onAnyInput(GtkWidget* window, void (*action)());

}  // namespace platform
