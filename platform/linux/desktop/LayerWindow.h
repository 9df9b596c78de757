#pragma once

#include <gtk/gtk.h>

namespace platform {

// Whether the display is of a Wayland compositor that lays windows over its whole desktop, panels included.
bool hasLayers();

// Lays the window, not realized yet, over everything on the monitor. It takes the keyboard.
void coverAsLayer(GtkWindow* window, GdkMonitor* monitor);

// Calls action at each key, button or touch, and once the pointer has really moved.
void onAnyInput(GtkWidget* window, void (*action)());

}  // namespace platform
