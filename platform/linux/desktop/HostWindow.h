#pragma once

#include <gdk/gdk.h>

#include <functional>

#include "platform/linux/Handles.h"
#include "platform/portable/Geometry.h"

namespace platform {

// The X11 window that a screen-saver host gave us to draw in. Null when there is none of that id. Until
// forgetHostWindow, errors of X11 are ignored.
ObjectRef<GdkWindow> findHostWindow(unsigned long id);

// Calls resize with the host window's size now and after each change; its end stops the main loop.
void followHostWindow(GdkWindow* host, std::function<void(const Size&)> resize);
void forgetHostWindow(GdkWindow* host);

}  // namespace platform
