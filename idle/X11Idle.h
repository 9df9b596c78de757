#pragma once

#include <X11/Xlib.h>

#include <chrono>
#include <memory>

#include "idle/IdleSource.h"
#include "idle/Timer.h"

// Any X server with the MIT-SCREEN-SAVER extension, which tells how long there has been no input.
class X11Idle : public IdleSource {
  public:
    // Null if this desktop does not offer it.
    static std::unique_ptr<IdleSource> open(EventLoop& loop, std::chrono::milliseconds time,
                                            IdleListener& listener);

    bool isOccupied() override;

  private:
    using Duration = std::chrono::milliseconds;

    X11Idle(Display* display, EventLoop& loop, Duration time, IdleListener& listener);
    void look();
    void setIdle(bool isIdle);
    Duration untilNextLook(Duration idleTime) const;
    Duration idleTime();

    platform::Handle<Display, XCloseDisplay> mDisplay;
    Duration mTime;
    IdleListener& mListener;
    Timer mNextLook;
    Duration mLastIdleTime{};
    bool mIsIdle = false;
};
