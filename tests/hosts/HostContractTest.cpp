#include <sys/resource.h>

#include <csignal>
#include <filesystem>

#include "tests/hosts/HostTest.h"
#include "tests/hosts/MonitorDisplay.h"
#include "tests/hosts/Sights.h"
#include "tests/program/Program.h"

using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;
using testing::SizeIs;

namespace {

// What holds in every host.
class HostContract : public HostTest, public testing::WithParamInterface<HostKind> {
  protected:
    HostContract() : HostTest(GetParam()) {}
};

}  // namespace

INSTANTIATE_TEST_SUITE_P(, HostContract, testing::Values(xScreenSaver(), mateScreensaver()),
                         [](const auto& test) { return test.param.label; });

TEST_P(HostContract, ShowsItOnTheWholeScreenAndEndsIt) {
    TestDisplay display;
    SaverHost host(mKind, display);
    host.environment["XDG_RUNTIME_DIR"] = "/tmp";
    const pid_t saver = host.show("--root --demo --verbose --speed 20");
    ASSERT_NE(0, saver) << host.log();
    EXPECT_TRUE(waitUntil([&] { return showsMap(display.picture(), kScreen); })) << host.log();
    EXPECT_THAT(argumentsOf(saver), ElementsAre("tellmar", "--root", "--demo", "--verbose", "--speed", "20"));
    EXPECT_EQ(10, getpriority(PRIO_PROCESS, static_cast<id_t>(saver)));
    EXPECT_TRUE(std::filesystem::exists("/proc/" + std::to_string(saver) + "/fd/2"));
    EXPECT_FALSE(host.remains().empty());

    const auto family = familyOf(saver);
    EXPECT_THAT(family, SizeIs(testing::Gt(1)));
    ASSERT_TRUE(host.command("deactivate"));
    expectGone(host, family);
    EXPECT_THAT(host.log(), Not(HasSubstr("crashed")));

    ASSERT_TRUE(host.command("activate"));
    EXPECT_THAT(host.waitForSavers(1), SizeIs(1));
}

TEST_P(HostContract, KeepsItOnTheScreenWhenTheServiceCannotBeHad) {
    TestDisplay display;
    SaverHost host(mKind, display);
    const pid_t saver = host.show("--verbose --speed 20 --feed http://127.0.0.1:9/");
    ASSERT_NE(0, saver) << host.log();
    EXPECT_TRUE(waitUntil([&] { return countOf(host.log(), "tick") >= 4; })) << host.log();
    EXPECT_TRUE(showsSplash(display.picture(), kScreen));
    EXPECT_THAT(host.processes("tellmar"), ElementsAre(saver));
    EXPECT_THAT(host.log(), Not(HasSubstr("crashed")));
}

// During which mate-screensaver stops it.
TEST_P(HostContract, KeepsItBehindItsUnlockDialog) {
    TestDisplay display;
    SaverHost host(mKind, display);
    const pid_t saver = host.show("--demo --verbose --speed 20");
    ASSERT_NE(0, saver) << host.log();
    ASSERT_TRUE(host.command("lock"));
    EXPECT_TRUE(waitUntil([&] { return showsMap(display.picture(), kScreen); })) << host.log();

    display.press("a");
    ASSERT_TRUE(waitUntil([&] { return showsDialog(display.picture(), kScreen); })) << host.log();
    const int fades = countOf(host.log(), "fade: ");
    display.press("Escape");
    EXPECT_TRUE(waitUntil([&] { return countOf(host.log(), "fade: ") >= fades + 3; })) << host.log();
    EXPECT_TRUE(waitUntil([&] { return showsMap(display.picture(), kScreen); }));
    EXPECT_FALSE(showsDialog(display.picture(), kScreen));
    EXPECT_THAT(host.processes("tellmar"), ElementsAre(saver));
}

TEST_P(HostContract, LosesItWhenKilled) {
    TestDisplay display;
    SaverHost host(mKind, display);
    const pid_t saver = host.show("--root --demo --verbose");
    ASSERT_NE(0, saver) << host.log();
    ASSERT_TRUE(waitUntil([&] { return countOf(host.log(), "page: loaded") >= 1; }));
    const auto family = familyOf(saver);
    host.crash();
    expectGone(host, family);
}

TEST_P(HostContract, KeepsItWhenTheResolutionChanges) {
    if (const std::string obstacle = MonitorDisplay::obstacle(); !obstacle.empty()) GTEST_SKIP() << obstacle;
    MonitorDisplay display;
    SaverHost host(mKind, display);
    const pid_t saver = host.show("--demo --speed 20");
    ASSERT_NE(0, saver) << host.log();
    EXPECT_TRUE(waitUntil([&] { return showsMap(display.picture(), kScreen); }));

    display.setMonitor(0, 0, "1024x768");
    EXPECT_TRUE(waitUntil([&] { return showsMap(display.picture(), {0, 0, 1024, 768}); })) << host.log();
    EXPECT_THAT(host.processes("tellmar"), ElementsAre(saver));
}

TEST_P(HostContract, ShowsItsPreviewInItsSettingsUntilTheyAreGone) {
    TestDisplay display(1920, 1080);
    SaverHost host(mKind, display);
    host.start("--demo --verbose --speed 0.1");
    const auto settings = host.openSettings();
    const auto preview = [&] { return descendantsRunning(settings->id(), "tellmar"); };
    ASSERT_TRUE(waitUntil([&] { return !preview().empty(); })) << host.log();

    const pid_t saver = preview()[0];
    const TestDisplay::Window window = std::stoul(environmentOf(saver)["XSCREENSAVER_WINDOW"], nullptr, 16);
    EXPECT_TRUE(waitUntil([&] { return showsPreview(display.picture(), display.areaOf(window)); }));

    const auto family = familyOf(saver);
    for (const pid_t each : descendantsRunning(settings->id(), mKind.settings)) kill(each, SIGKILL);
    expectGone(host, family);
}
