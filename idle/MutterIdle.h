#pragma once

#include <chrono>
#include <memory>

#include "idle/Bus.h"
#include "idle/IdleSource.h"
#include "idle/Timer.h"

// GNOME Shell's own monitor, under Wayland and X11. It does not report a session that a program keeps from
// being idle.
class MutterIdle : public IdleSource {
  public:
    // Null if this desktop does not offer it.
    static std::unique_ptr<IdleSource> open(EventLoop& loop, Bus& bus, std::chrono::milliseconds time,
                                            IdleListener& listener);

  private:
    MutterIdle(EventLoop& loop, Bus& bus, std::chrono::milliseconds time, IdleListener& listener);
    void watchIdle();
    void watchFired(std::uint32_t watch);

    Bus& mBus;
    std::chrono::milliseconds mTime;
    IdleListener& mListener;
    Timer mRetry;
    std::uint32_t mIdleWatch = 0;    // fires each time the session becomes idle
    std::uint32_t mActiveWatch = 0;  // fires once
};
