#pragma once

#include <functional>
#include <memory>

#include "platform/Timer.h"

// Calls tick on the main loop on a schedule, once every interval from now on. A tick that comes late or takes
// long does not move the others; those that it leaves no time for are left out.
class AnimationTimer {
  public:
    AnimationTimer(double intervalSeconds, std::function<void()> tick);
    AnimationTimer(const AnimationTimer&) = delete;
    AnimationTimer& operator=(const AnimationTimer&) = delete;

    // For a tick to call: the next one is due that long after this one was.
    void setInterval(double seconds);

  private:
    void schedule();
    void fire();

    std::function<void()> mTick;
    long long mInterval;   // microseconds, as the times
    long long mDue;        // of the next tick; during a tick, its own
    long long mLastStart;  // of a tick
    std::unique_ptr<platform::Timer> mTimer;
};
