#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/resource.h>

#include <algorithm>
#include <csignal>
#include <string>

#include "tests/hosts/HostSession.h"
#include "tests/hosts/MonitorDisplay.h"
#include "tests/hosts/Sights.h"
#include "tests/program/ProcessTree.h"
#include "tests/program/Program.h"
#include "tests/program/Waiting.h"

using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::SizeIs;

namespace {

constexpr TestDisplay::Area kScreen{0, 0, 1280, 720};

class XScreenSaver : public testing::Test {
  protected:
    void SetUp() override {
        const std::string obstacle = HostSession::obstacle({"xscreensaver", "xscreensaver-command"});
        if (!obstacle.empty()) GTEST_SKIP() << obstacle;
    }

    // Tellmar as the one saver, with these options.
    static void startDaemon(HostSession& session, const std::string& options) {
        session.write(".xscreensaver",
                      "mode: one\nselected: 0\ntimeout: 9:00:00\nlock: False\nsplash: False\nfade: False\n"
                      "unfade: False\ndpmsEnabled: False\nverbose: True\nprograms: tellmar " +
                          options + "\\n\n");
        session.start({"xscreensaver", "--no-splash"});
    }

    static bool command(HostSession& session, const char* what) {
        return waitUntil([&] { return session.run({"xscreensaver-command", what}) == 0; });
    }

    static std::vector<pid_t> familyOf(pid_t saver) {
        std::vector<pid_t> family = descendants(saver);
        family.push_back(saver);
        return family;
    }

    static void expectGone(const HostSession& session, const std::vector<pid_t>& family) {
        EXPECT_TRUE(waitUntil([&] { return std::none_of(family.begin(), family.end(), ::isRunning); }));
        EXPECT_THAT(session.remains(), IsEmpty());
    }
};

}  // namespace

TEST_F(XScreenSaver, ShowsItOnTheWholeScreenAndEndsIt) {
    TestDisplay display;
    HostSession session(display);
    session.environment["XDG_RUNTIME_DIR"] = "/tmp";
    startDaemon(session, "--root --demo --verbose --speed 20");
    ASSERT_TRUE(command(session, "-activate"));
    const auto savers = session.waitForSavers(1);
    ASSERT_THAT(savers, SizeIs(1));
    EXPECT_TRUE(waitUntil([&] { return showsMap(display.picture(), kScreen); })) << session.log();
    EXPECT_THAT(argumentsOf(savers[0]),
                ElementsAre("tellmar", "--root", "--demo", "--verbose", "--speed", "20"));
    EXPECT_EQ(10, getpriority(PRIO_PROCESS, static_cast<id_t>(savers[0])));
    EXPECT_FALSE(session.remains().empty());

    const auto family = familyOf(savers[0]);
    EXPECT_THAT(family, SizeIs(testing::Gt(1)));
    ASSERT_TRUE(command(session, "-deactivate"));
    expectGone(session, family);
    EXPECT_THAT(session.log(), Not(HasSubstr("crashed")));

    ASSERT_TRUE(command(session, "-activate"));
    EXPECT_THAT(session.waitForSavers(1), SizeIs(1));
}

TEST_F(XScreenSaver, KeepsItOnTheScreenWhenTheServiceCannotBeHad) {
    TestDisplay display;
    HostSession session(display);
    startDaemon(session, "--verbose --speed 20 --feed http://127.0.0.1:9/");
    ASSERT_TRUE(command(session, "-activate"));
    EXPECT_TRUE(waitUntil([&] { return countOf(session.log(), "tick") >= 4; })) << session.log();
    EXPECT_TRUE(showsSplash(display.picture(), kScreen));
    EXPECT_THAT(session.processes("tellmar"), SizeIs(1));
    EXPECT_THAT(session.log(), Not(HasSubstr("crashed")));
}

TEST_F(XScreenSaver, StopsItAndLetsItGoOn) {
    TestDisplay display;
    HostSession session(display);
    startDaemon(session, "--demo --verbose --speed 20");
    ASSERT_TRUE(command(session, "-activate"));
    const auto savers = session.waitForSavers(1);
    ASSERT_THAT(savers, SizeIs(1));
    ASSERT_TRUE(waitUntil([&] { return countOf(session.log(), "fade: ") >= 1; }));

    kill(savers[0], SIGSTOP);
    std::this_thread::sleep_for(std::chrono::seconds(2));
    const int fades = countOf(session.log(), "fade: ");
    kill(savers[0], SIGCONT);
    EXPECT_TRUE(waitUntil([&] { return countOf(session.log(), "fade: ") >= fades + 3; }));
    EXPECT_EQ(savers, session.processes("tellmar"));
}

TEST_F(XScreenSaver, LosesItWhenKilled) {
    TestDisplay display;
    HostSession session(display);
    startDaemon(session, "--demo --verbose");
    ASSERT_TRUE(command(session, "-activate"));
    const auto savers = session.waitForSavers(1);
    ASSERT_THAT(savers, SizeIs(1));
    ASSERT_TRUE(waitUntil([&] { return countOf(session.log(), "page: loaded") >= 1; }));
    const auto family = familyOf(savers[0]);
    session.kill("xscreensaver");
    session.kill("xscreensaver-gfx");
    expectGone(session, family);
}

TEST_F(XScreenSaver, RunsOneOnEachMonitorWhateverBecomesOfThem) {
    if (const std::string obstacle = MonitorDisplay::obstacle(); !obstacle.empty()) GTEST_SKIP() << obstacle;
    MonitorDisplay display;
    HostSession session(display);
    startDaemon(session, "--demo --speed 20");
    ASSERT_TRUE(command(session, "-activate"));
    const auto first = session.waitForSavers(1);
    ASSERT_THAT(first, SizeIs(1));
    EXPECT_TRUE(waitUntil([&] { return showsMap(display.picture(), kScreen); }));

    display.setMonitor(0, 0, "1024x768");
    EXPECT_TRUE(waitUntil([&] { return showsMap(display.picture(), {0, 0, 1024, 768}); }));
    EXPECT_EQ(first, session.processes("tellmar"));

    display.setMonitor(1, 1024, "800x600");
    const auto both = session.waitForSavers(2);
    EXPECT_THAT(both, SizeIs(2));
    EXPECT_THAT(both, Contains(first[0]));
    EXPECT_TRUE(waitUntil([&] { return showsMap(display.picture(), {1024, 0, 800, 600}); }));

    display.removeMonitor(1);
    EXPECT_EQ(first, session.waitForSavers(1));
    EXPECT_TRUE(waitUntil([&] { return showsMap(display.picture(), {0, 0, 1024, 768}); }));
}

TEST_F(XScreenSaver, ShowsItsPreviewInItsSettings) {
    TestDisplay display(1920, 1080);
    HostSession session(display);
    startDaemon(session, "--demo --verbose --speed 0.1");
    ASSERT_TRUE(command(session, "-version"));
    const auto settings = session.startBeside({"sh", "-c", "xscreensaver-settings; exec sleep 600"});
    const auto preview = [&] { return descendantsRunning(settings->id(), "tellmar"); };
    ASSERT_TRUE(waitUntil([&] { return !preview().empty(); })) << session.log();

    const pid_t saver = preview()[0];
    const std::vector<std::string> arguments = argumentsOf(saver);
    ASSERT_THAT(arguments, SizeIs(7));
    EXPECT_EQ("--window-id", arguments[5]);
    const TestDisplay::Window window = std::stoul(arguments[6], nullptr, 16);
    EXPECT_EQ(window, std::stoul(environmentOf(saver)["XSCREENSAVER_WINDOW"], nullptr, 16));
    EXPECT_TRUE(waitUntil([&] { return countOf(session.log(), "tick 1") == 1; }));
    EXPECT_TRUE(waitUntil([&] { return showsPreview(display.picture(), display.areaOf(window)); }));

    const auto family = familyOf(saver);
    for (const pid_t each : descendantsRunning(settings->id(), "xscreensaver-settings")) kill(each, SIGKILL);
    EXPECT_TRUE(waitUntil([&] { return std::none_of(family.begin(), family.end(), ::isRunning); }));
}
