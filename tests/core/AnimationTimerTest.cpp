#include "program/AnimationTimer.h"

#include "platform/RunLoop.h"
#include "platform/Timer.h"
#include "tests/standins/StandIns.h"

namespace {

using standins::desktop;
using AnimationTimerTest = standins::Test;

void take(int milliseconds) { desktop.monotonicMicroseconds += 1000LL * milliseconds; }

TEST_F(AnimationTimerTest, TicksKeepTheirScheduleAfterSlowOnesAndNeverComeInABurst) {
    desktop.monotonicMicroseconds = 0;
    std::vector<long long> starts;                        // milliseconds
    const platform::Timer stall(350, [] { take(310); });  // as when the process is stopped
    AnimationTimer timer(0.1, [&] {
        starts.push_back(desktop.monotonicMicroseconds / 1000);
        take(starts.size() == 6 ? 300 : 40);
        if (starts.size() == 7) timer.setInterval(0.3);
    });
    platform::RunLoop::runFor(1600);
    EXPECT_THAT(starts, testing::ElementsAre(100, 200, 300, 660, 800, 900, 1200, 1500));
}

}  // namespace
