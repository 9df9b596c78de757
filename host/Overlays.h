#pragma once

#include <gtk/gtk.h>

// Under a Wayland compositor with layers the program shows itself on every monitor, a process for each: the
// first process shows nothing, but starts, follows and ends the others.

// Runs the first process until a signal or a user's input, which reaches one of the others, ends all of them.
int runOverlays();

// The monitor that this process, one of the others, is to cover; null in any other process, and when the
// monitor has gone meanwhile.
GdkMonitor* overlayMonitor();
bool isOverlay();

// Tells the first process of the user's input.
void endOverlays();
