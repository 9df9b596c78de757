#include <csignal>

#include "tests/hosts/HostTest.h"
#include "tests/hosts/MonitorDisplay.h"
#include "tests/hosts/Sights.h"
#include "tests/program/Program.h"

using testing::Contains;
using testing::ElementsAre;
using testing::SizeIs;

namespace {

class XScreenSaver : public HostTest {
  protected:
    XScreenSaver() : HostTest(xScreenSaver()) {}
};

}  // namespace

TEST_F(XScreenSaver, KeepsItWhenItHasBeenStoppedForAWhile) {
    TestDisplay display;
    SaverHost host(mKind, display);
    const pid_t saver = host.show("--demo --verbose --speed 20");
    ASSERT_NE(0, saver) << host.log();
    ASSERT_TRUE(waitUntil([&] { return countOf(host.log(), "fade: ") >= 1; }));

    kill(saver, SIGSTOP);
    std::this_thread::sleep_for(std::chrono::seconds(2));
    const int fades = countOf(host.log(), "fade: ");
    kill(saver, SIGCONT);
    EXPECT_TRUE(waitUntil([&] { return countOf(host.log(), "fade: ") >= fades + 3; }));
    EXPECT_THAT(host.processes("tellmar"), ElementsAre(saver));
}

TEST_F(XScreenSaver, RunsOneOnEachMonitor) {
    if (const std::string obstacle = MonitorDisplay::obstacle(); !obstacle.empty()) GTEST_SKIP() << obstacle;
    MonitorDisplay display;
    SaverHost host(mKind, display);
    const pid_t first = host.show("--demo --speed 20");
    ASSERT_NE(0, first) << host.log();
    EXPECT_TRUE(waitUntil([&] { return showsMap(display.picture(), kScreen); }));

    display.setMonitor(1, 1280, "800x600");
    const auto both = host.waitForSavers(2);
    EXPECT_THAT(both, SizeIs(2)) << host.log();
    EXPECT_THAT(both, Contains(first));
    EXPECT_TRUE(waitUntil([&] { return showsMap(display.picture(), {1280, 0, 800, 600}); }));

    display.removeMonitor(1);
    EXPECT_THAT(host.waitForSavers(1), ElementsAre(first));
    EXPECT_TRUE(waitUntil([&] { return showsMap(display.picture(), kScreen); }));
}
