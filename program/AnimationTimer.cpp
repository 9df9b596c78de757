#include "program/AnimationTimer.h"

#include <algorithm>
#include <utility>

#include "platform/Clock.h"

using platform::monotonicMicroseconds;

namespace {

long long microseconds(double seconds) { return std::max(static_cast<long long>(seconds * 1e6), 1000LL); }

}  // namespace

AnimationTimer::AnimationTimer(double intervalSeconds, std::function<void()> tick)
    : mTick(std::move(tick)),
      mInterval(microseconds(intervalSeconds)),
      mDue(monotonicMicroseconds()),
      mLastStart(mDue) {
    schedule();
}

void AnimationTimer::setInterval(double seconds) { mInterval = microseconds(seconds); }

// At the earliest half an interval after a tick that came late: what it showed must be seen, and what it
// began to load needs time.
void AnimationTimer::schedule() {
    const long long now = monotonicMicroseconds();
    const long long earliest = std::max(mLastStart + mInterval / 2, now);
    const long long intervals = (earliest - mDue + mInterval - 1) / mInterval;
    mDue += std::max(intervals, 1LL) * mInterval;
    const int milliseconds = static_cast<int>((mDue - now + 999) / 1000);
    mTimer = std::make_unique<platform::Timer>(milliseconds, [this] { fire(); });
}

void AnimationTimer::fire() {
    mLastStart = monotonicMicroseconds();
    mTick();
    schedule();
}
