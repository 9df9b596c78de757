#pragma once

#include <gdk/gdk.h>

namespace platform {

// The monitor's number, in the order in which they were added; how many there are if it is no longer there.
int numberOf(GdkMonitor* monitor);
GdkRectangle areaOf(GdkMonitor* monitor);

// Whether it is the one in use. KWin tells, and gives the focus back only to a window on that monitor; true
// on other desktops.
bool isActive(GdkMonitor* monitor);

}  // namespace platform
