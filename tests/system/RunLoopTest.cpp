#include "platform/RunLoop.h"

#include <glib.h>
#include <gtest/gtest.h>

TEST(RunLoopTest, ARunEndsInTimeOrWhenItIsDone) {
    using platform::RunLoop;
    int turns = 0;
    EXPECT_FALSE(RunLoop::runUntil([] { return false; }, 1));
    g_usleep(5000);
    EXPECT_FALSE(g_main_context_pending(nullptr)) << "the timer is still there";
    g_idle_add([](gpointer count) -> gboolean { return ++*static_cast<int*>(count) < 3; }, &turns);
    EXPECT_TRUE(RunLoop::runUntil([&] { return turns == 3; }, 10'000));
}
