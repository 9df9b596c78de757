#pragma once

#include <functional>

// Calls tick on the main loop once every interval, for as long as this object lives. A slow tick delays the
// next.
class AnimationTimer {
  public:
    AnimationTimer(double intervalSeconds, std::function<void()> tick);
    ~AnimationTimer();
    AnimationTimer(const AnimationTimer&) = delete;
    AnimationTimer& operator=(const AnimationTimer&) = delete;

  private:
    std::function<void()> mTick;
    unsigned mSource;
};
