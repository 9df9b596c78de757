#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <csignal>
#include <string>

#include "tests/hosts/HostSession.h"
#include "tests/hosts/Sights.h"
#include "tests/program/ProcessTree.h"
#include "tests/program/Waiting.h"

using testing::IsEmpty;
using testing::SizeIs;

namespace {

constexpr TestDisplay::Area kMonitor{0, 0, 1024, 768};  // each one, all at the same corner of the X screen

// sway whose monitors are windows on an X display, which shows their pictures and gives them a keyboard.
class Wayland : public testing::Test {
  protected:
    void SetUp() override {
        const std::string obstacle = HostSession::obstacle({"sway", "swaymsg"});
        if (!obstacle.empty()) GTEST_SKIP() << obstacle;
        startCompositor();
        mSession.environment.erase("DISPLAY");
        mSession.environment["WAYLAND_DISPLAY"] = "wayland-1";
    }

    void startCompositor() {
        mSession.environment["XDG_RUNTIME_DIR"] = "/tmp";
        mSession.environment["WLR_BACKENDS"] = "x11";
        mSession.environment["WLR_RENDERER"] = "pixman";
        mSession.write("sway.conf", "xwayland disable\noutput * bg #ff00ff solid_color\n");
        mSession.start({"sway", "-c", "sway.conf"});
        ASSERT_TRUE(waitUntil([this] { return message("-t get_version"); })) << mSession.log();
    }

    bool message(const std::string& message) {
        return mSession.run({"sh", "-c", "swaymsg -s /tmp/sway-ipc* " + message}) == 0;
    }

    void start() {
        mProgram = mSession.startBeside(
            {"sh", "-c", TELLMAR_PROGRAM " --fullscreen --demo --speed 20; exec sleep 600"});
    }
    std::vector<pid_t> processes() const { return descendantsRunning(mProgram->id(), "tellmar"); }
    // The one that shows nothing, and the others.
    bool coversMonitors(std::size_t count) const {
        return waitUntil([&] { return processes().size() == 1 + count; });
    }
    bool showsMapOnUppermost() const {
        return waitUntil([this] { return showsMap(mDisplay.picture(), kMonitor); });
    }
    void expectNothingLeft() const {
        EXPECT_TRUE(waitUntil([this] { return processes().empty() && mSession.remains().empty(); }))
            << mSession.log();
    }

    TestDisplay mDisplay{1024, 768};
    HostSession mSession{mDisplay};
    std::unique_ptr<Child> mProgram;
};

}  // namespace

TEST_F(Wayland, CoversMonitorsThatComeAndASignalEndsAll) {
    start();
    EXPECT_TRUE(coversMonitors(1)) << mSession.log();
    EXPECT_TRUE(showsMapOnUppermost()) << mSession.log();
    ASSERT_TRUE(message("create_output"));
    EXPECT_TRUE(coversMonitors(2));
    EXPECT_TRUE(showsMapOnUppermost()) << mSession.log();

    const auto left = processes();
    ASSERT_FALSE(left.empty());
    kill(left.front(), SIGTERM);
    expectNothingLeft();
}

TEST_F(Wayland, AnyKeyEndsAll) {
    ASSERT_TRUE(message("create_output"));
    start();
    EXPECT_TRUE(coversMonitors(2)) << mSession.log();
    EXPECT_TRUE(showsMapOnUppermost()) << mSession.log();
    mDisplay.press("a");
    expectNothingLeft();
}

TEST_F(Wayland, TheOthersEndWithTheFirstProcess) {
    start();
    EXPECT_TRUE(coversMonitors(1)) << mSession.log();
    EXPECT_TRUE(showsMapOnUppermost()) << mSession.log();
    kill(processes().front(), SIGKILL);
    expectNothingLeft();
}
