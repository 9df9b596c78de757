#pragma once

#include <gtk/gtk.h>

// Under a Wayland compositor with layers the program covers every monitor, with one process for each. The
// first process shows nothing; it starts, watches and ends the others.

// Runs the first process until a signal, or user input to one of the others, ends them all.
int runOverlays();

// Whether this process covers a monitor.
bool isOverlay();
// The monitor that this process is to cover; null when monitors have changed since it was started.
GdkMonitor* overlayMonitor();

// Ends this process, and through the first one all the others.
void endOverlays();
