#include "program/AnimationTimer.h"

#include <glib.h>

#include <algorithm>
#include <utility>

#include "platform/Clock.h"

using platform::monotonicMicroseconds;

namespace {

long long microseconds(double seconds) {
    return std::max(static_cast<long long>(seconds * G_USEC_PER_SEC), 1000LL);
}

}  // namespace

AnimationTimer::AnimationTimer(double intervalSeconds, std::function<void()> tick)
    : mTick(std::move(tick)),
      mInterval(microseconds(intervalSeconds)),
      mDue(monotonicMicroseconds()),
      mLastStart(mDue) {
    schedule();
}

AnimationTimer::~AnimationTimer() {
    if (mSource) g_source_remove(mSource);
}

void AnimationTimer::setInterval(double seconds) { mInterval = microseconds(seconds); }

// At the earliest half an interval after a tick that came late: what it showed must be seen, and what it
// began to load needs time.
void AnimationTimer::schedule() {
    const long long now = monotonicMicroseconds();
    const long long earliest = std::max(mLastStart + mInterval / 2, now);
    const long long intervals = (earliest - mDue + mInterval - 1) / mInterval;
    mDue += std::max(intervals, 1LL) * mInterval;
    mSource = g_timeout_add(
        static_cast<guint>((mDue - now + 999) / 1000),
        [](gpointer self) -> gboolean {
            static_cast<AnimationTimer*>(self)->fire();
            return G_SOURCE_REMOVE;
        },
        this);
}

void AnimationTimer::fire() {
    mSource = 0;
    mLastStart = monotonicMicroseconds();
    mTick();
    schedule();
}
