#pragma once

#include <X11/Xlib.h>

// Whether another program has grabbed the keyboard, as a locker or an open menu does.
bool keyboardIsTaken(Display* display);

// Whether the window in use fills the screen, as a film does.
bool fullScreenWindowIsActive(Display* display);
