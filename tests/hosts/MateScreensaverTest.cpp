#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/resource.h>

#include <algorithm>
#include <filesystem>
#include <string>

#include "tests/hosts/HostSession.h"
#include "tests/hosts/MonitorDisplay.h"
#include "tests/hosts/Sights.h"
#include "tests/program/ProcessTree.h"
#include "tests/program/Program.h"
#include "tests/program/Waiting.h"

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

namespace {

constexpr TestDisplay::Area kScreen{0, 0, 1280, 720};

class MateScreensaver : public testing::Test {
  protected:
    void SetUp() override {
        const std::string obstacle =
            HostSession::obstacle({"mate-screensaver", "mate-screensaver-command", "dbus-daemon"});
        if (!obstacle.empty()) GTEST_SKIP() << obstacle;
    }

    // Tellmar as the one saver, with these options.
    static void activate(HostSession& session, const std::string& options) {
        session.write(".local/share/applications/screensavers/tellmar.desktop",
                      "[Desktop Entry]\nType=Application\nName=Tellmar\nTryExec=tellmar\n"
                      "Categories=Screensaver;\nExec=tellmar " +
                          options + "\n");
        session.write(".config/glib-2.0/settings/keyfile",
                      "[org/mate/screensaver]\nmode='single'\nthemes=['screensavers-tellmar']\n"
                      "lock-enabled=false\nidle-activation-enabled=false\n");
        session.start({"mate-screensaver", "--no-daemon", "--debug"});
        EXPECT_TRUE(waitUntil([&] { return session.run({"mate-screensaver-command", "-a"}) == 0; }));
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

std::vector<std::string> namesOf(const std::map<std::string, std::string>& values) {
    std::vector<std::string> names;
    for (const auto& [name, value] : values) names.push_back(name);
    return names;
}

}  // namespace

TEST_F(MateScreensaver, ShowsItWithHardlyAnyEnvironmentAndEndsIt) {
    TestDisplay display;
    HostSession session(display);
    activate(session, "--root --demo --verbose --speed 20");
    const auto savers = session.waitForSavers(1);
    ASSERT_THAT(savers, SizeIs(1)) << session.log();
    EXPECT_TRUE(waitUntil([&] { return showsMap(display.picture(), kScreen); })) << session.log();
    EXPECT_THAT(namesOf(environmentOf(savers[0])), ElementsAre("DBUS_SESSION_BUS_ADDRESS", "DISPLAY", "HOME",
                                                               "LANG", "PATH", "XSCREENSAVER_WINDOW"));
    EXPECT_EQ(10, getpriority(PRIO_PROCESS, static_cast<id_t>(savers[0])));
    EXPECT_TRUE(std::filesystem::exists("/proc/" + std::to_string(savers[0]) + "/fd/2"));
    EXPECT_FALSE(session.remains().empty());

    const auto family = familyOf(savers[0]);
    ASSERT_EQ(0, session.run({"mate-screensaver-command", "-d"}));
    expectGone(session, family);
}

TEST_F(MateScreensaver, LosesItWhenKilled) {
    TestDisplay display;
    HostSession session(display);
    activate(session, "--root --demo --verbose");
    const auto savers = session.waitForSavers(1);
    ASSERT_THAT(savers, SizeIs(1)) << session.log();
    ASSERT_TRUE(waitUntil([&] { return countOf(session.log(), "page: loaded") >= 1; }));
    const auto family = familyOf(savers[0]);
    session.kill("mate-screensaver");
    expectGone(session, family);
}

TEST_F(MateScreensaver, KeepsItWhenTheResolutionChanges) {
    if (const std::string obstacle = MonitorDisplay::obstacle(); !obstacle.empty()) GTEST_SKIP() << obstacle;
    MonitorDisplay display;
    HostSession session(display);
    activate(session, "--root --demo --speed 20");
    const auto savers = session.waitForSavers(1);
    ASSERT_THAT(savers, SizeIs(1)) << session.log();
    EXPECT_TRUE(waitUntil([&] { return showsMap(display.picture(), kScreen); }));

    display.setMonitor(0, 0, "1024x768");
    EXPECT_TRUE(waitUntil([&] { return showsMap(display.picture(), {0, 0, 1024, 768}); })) << session.log();
    EXPECT_EQ(savers, session.processes("tellmar"));
}
