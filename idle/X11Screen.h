#pragma once

#include <X11/Xlib.h>

// Whether the window in use fills the screen, as a film does.
bool fullScreenWindowIsActive(Display* display);
