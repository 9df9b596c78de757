#include "program/AnimationTimer.h"

#include <glib.h>
#include <gtest/gtest.h>

#include <vector>

#include "platform/Clock.h"
#include "platform/RunLoop.h"

using platform::RunLoop;

namespace {

// As when the process is stopped, until shortly before a tick.
gboolean stall(gpointer) {
    g_usleep(340'000);
    return G_SOURCE_REMOVE;
}

}  // namespace

TEST(AnimationTimerTest, TicksKeepTheirScheduleAfterSlowOnesAndNeverComeInABurst) {
    std::vector<double> starts;  // in intervals of 100 milliseconds
    const auto now = [] { return static_cast<double>(platform::monotonicMicroseconds()) / 100'000; };
    const double begin = now();
    AnimationTimer timer(0.1, [&] {
        starts.push_back(now() - begin);
        RunLoop::runFor(40);
        if (starts.size() == 3) g_timeout_add(10, stall, nullptr);
        if (starts.size() == 7) timer.setInterval(0.3);
    });
    ASSERT_TRUE(RunLoop::runUntil([&] { return starts.size() == 8; }, 60'000));

    for (std::size_t i = 1; i < starts.size(); ++i) EXPECT_GT(starts[i] - starts[i - 1], 0.49) << i;
    EXPECT_GT(starts[3] - starts[2], 3.4);
    EXPECT_GT(starts[7] - starts[6], 2.4);
    int onTime = 0;
    for (const double start : starts) onTime += start - static_cast<int>(start) < 0.3;
    EXPECT_GE(onTime, 6) << "the schedule has moved";
}
