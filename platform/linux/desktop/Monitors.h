#pragma once

#include <gdk/gdk.h>

namespace platform {

// The monitor's number, in the order in which they were added; how many there are if it is no longer there.
int numberOf(GdkMonitor* monitor);
GdkRectangle areaOf(GdkMonitor* monitor);

}  // namespace platform
