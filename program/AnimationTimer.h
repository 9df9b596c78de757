#pragma once

#include <functional>

// Calls tick every interval on the main loop for as long as it lives. A tick that takes longer delays the
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
