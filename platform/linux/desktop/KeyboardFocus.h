#pragma once

#include <gtk/gtk.h>

namespace platform {

// Whether another X11 client has grabbed the keyboard, as lockers and open menus do: no key would reach a
// window of ours. A grab that ends within a second does not count, as that of the shortcut which started us.
bool keyboardIsTaken();

// Remembers which X11 window has the focus and gives it back; under Wayland, where the desktop does that,
// sees to it that it can.
class FocusKeeper {
  public:
    FocusKeeper();
    // When the windows of other processes have gone: one that was still coming has taken the focus once more.
    ~FocusKeeper();
    FocusKeeper(const FocusKeeper&) = delete;
    FocusKeeper& operator=(const FocusKeeper&) = delete;

    // For a key that comes before all windows have gone, of which some may not be on the screen yet.
    void giveBack(bool windowsAreComing);

  private:
    void setFocus() const;

    unsigned long mWindow = 0;
    int mRevert = 0;
    GtkWidget* mLastWindow = nullptr;
};

}  // namespace platform
