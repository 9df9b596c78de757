#include "tests/hosts/HostTest.h"
#include "tests/hosts/MonitorDisplay.h"
#include "tests/hosts/Sights.h"

using testing::ElementsAre;
using testing::IsEmpty;
using testing::IsSupersetOf;
using testing::Key;
using testing::SizeIs;

namespace {

class MateScreensaver : public HostTest {
  protected:
    MateScreensaver() : HostTest(mateScreensaver()) {}
};

}  // namespace

TEST_F(MateScreensaver, GivesItHardlyAnyEnvironment) {
    TestDisplay display;
    SaverHost host(mKind, display);
    host.environment["XDG_RUNTIME_DIR"] = "/tmp";
    const pid_t saver = host.show("--demo");
    ASSERT_NE(0, saver) << host.log();
    EXPECT_THAT(environmentOf(saver),
                ElementsAre(Key("DBUS_SESSION_BUS_ADDRESS"), Key("DISPLAY"), Key("HOME"), Key("LANG"),
                            Key("PATH"), Key("XSCREENSAVER_WINDOW")));
}

// The host takes a new monitor for somebody's wish to go on working, and ends its savers.
TEST_F(MateScreensaver, EndsItWhenAMonitorComesAndRunsOneOnEachTheNextTime) {
    if (const std::string obstacle = MonitorDisplay::obstacle(); !obstacle.empty()) GTEST_SKIP() << obstacle;
    MonitorDisplay display;
    SaverHost host(mKind, display);
    const pid_t first = host.show("--demo --speed 20");
    ASSERT_NE(0, first) << host.log();
    EXPECT_TRUE(waitUntil([&] { return showsMap(display.picture(), kScreen); }));
    const auto family = familyOf(first);
    display.setMonitor(1, 1280, "800x600");
    EXPECT_THAT(host.waitForSavers(0), IsEmpty()) << host.log();
    expectGone(host, family);

    ASSERT_TRUE(host.command("activate"));
    const auto both = host.waitForSavers(2);
    EXPECT_THAT(both, SizeIs(2)) << host.log();
    for (const TestDisplay::Area& area : {kScreen, {1280, 0, 800, 600}})
        EXPECT_TRUE(waitUntil([&] { return showsMap(display.picture(), area); })) << host.log();

    display.removeMonitor(1);
    const auto left = host.waitForSavers(1);
    EXPECT_THAT(left, SizeIs(1)) << host.log();
    EXPECT_THAT(both, IsSupersetOf(left));
    EXPECT_TRUE(waitUntil([&] { return showsMap(display.picture(), kScreen); }));
}
