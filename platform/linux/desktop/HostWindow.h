#pragma once

#include <gdk/gdk.h>

#include <functional>

#include "platform/linux/Handles.h"
#include "platform/portable/Geometry.h"

namespace platform {

// The X11 window that a screen-saver host gave us to draw in, or null when no window has that id. X11 errors
// are ignored until forgetHostWindow.
ObjectRef<GdkWindow> findHostWindow(unsigned long id);

// Whether the host shows a preview there: in a window of its own, such as a dialog, that does not cover the
// monitor, or smaller than half the monitor in both directions.
bool isPreviewWindow(GdkWindow* host);

// Calls resize with the host window's size now and after each change. Stops the main loop when that window
// ends.
void followHostWindow(GdkWindow* host, std::function<void(const Size&)> resize);
void forgetHostWindow(GdkWindow* host);

}  // namespace platform
