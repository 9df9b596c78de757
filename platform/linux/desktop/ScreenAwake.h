#pragma once

#include <gtk/gtk.h>

#include "platform/linux/Handles.h"

namespace platform {

// Keeps the desktop from blanking, locking or switching off the screen while this lives: by the X server's
// saver and its power management, which is over when our connection ends, and by the session bus.
class ScreenAwake {
  public:
    ScreenAwake();
    ~ScreenAwake();
    ScreenAwake(const ScreenAwake&) = delete;
    ScreenAwake& operator=(const ScreenAwake&) = delete;

  private:
    ObjectRef<GDBusConnection> mBus;  // what was asked for on it ends with it
};

// The same for a Wayland compositor, while the window is on the screen.
void keepAwakeWhileShown(GtkWidget* window);

}  // namespace platform
