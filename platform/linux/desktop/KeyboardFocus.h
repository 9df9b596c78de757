#pragma once

namespace platform {

// Whether another X11 client has grabbed the keyboard, as lockers and open menus do: no key would reach a
// window of ours. A grab that ends within a second does not count, as that of the shortcut which started us.
bool keyboardIsTaken();

// Remembers which X11 window has the focus, and gives it back, at the latest at the end.
class FocusKeeper {
  public:
    FocusKeeper();
    ~FocusKeeper();
    FocusKeeper(const FocusKeeper&) = delete;
    FocusKeeper& operator=(const FocusKeeper&) = delete;

    void giveBack() const;

  private:
    unsigned long mWindow = 0;
    int mRevert = 0;
};

}  // namespace platform
