#pragma once

#include <gtk/gtk.h>

// Under a Wayland compositor with layers the program shows itself on every monitor, a process for each: the
// first process shows nothing, but starts, follows and ends the others.

// Runs the first process until a signal or a user's input, which reaches one of the others, ends all of them.
int runOverlays();

// Whether this process is one of the others.
bool isOverlay();
// The monitor that it is to cover; null when monitors have come or gone since it was started.
GdkMonitor* overlayMonitor();

// Tells the first process of the user's input.
void endOverlays();
