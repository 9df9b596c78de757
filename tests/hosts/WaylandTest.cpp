#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <csignal>
#include <functional>
#include <regex>
#include <string>

#include "tests/hosts/HostSession.h"
#include "tests/hosts/Sights.h"
#include "tests/program/ProcessTree.h"
#include "tests/program/Program.h"
#include "tests/program/Waiting.h"

using testing::Contains;
using testing::IsEmpty;
using testing::Not;

namespace {

constexpr TestDisplay::Area kMonitor{0, 0, 1024, 768};  // each one, all at the same corner of the X screen
constexpr char kProgram[] = TELLMAR_PROGRAM " --fullscreen --demo --speed 20";

// A compositor whose monitors are windows on an X display, which shows their pictures and gives them input.
class Wayland : public testing::Test {
  protected:
    void startCompositor(const std::vector<std::string>& command, const char* socket) {
        mSession.environment["XDG_RUNTIME_DIR"] = "/tmp";
        mSession.environment["WLR_BACKENDS"] = "x11";
        mSession.environment["WLR_RENDERER"] = "pixman";
        mSession.start(command);
        ASSERT_TRUE(waitUntil([&] { return succeeds(std::string("test -S /tmp/") + socket); }))
            << mSession.log();
        mSession.environment.erase("DISPLAY");
        mSession.environment["WAYLAND_DISPLAY"] = socket;
    }

    bool succeeds(const std::string& command) { return mSession.run({"sh", "-c", command}) == 0; }

    void start(const std::string& command = kProgram) {
        mProgram = mSession.startBeside({"sh", "-c", command + "; exec sleep 600"});
    }
    // The first one, which shows nothing where there are layers, before the others.
    std::vector<pid_t> processes() const { return descendantsRunning(mProgram->id(), "tellmar"); }
    bool runs(std::size_t count) const {
        return waitUntil([&] { return processes().size() == count; });
    }
    bool showsMapOnUppermost() const {
        return waitUntil([this] { return showsMap(mDisplay.picture(), kMonitor); });
    }
    void expectNothingLeft() const {
        EXPECT_TRUE(waitUntil([this] { return processes().empty() && mSession.remains().empty(); }))
            << mSession.log();
        EXPECT_TRUE(waitUntil([this] { return !showsMap(mDisplay.picture(), kMonitor); }));
    }

    TestDisplay mDisplay{1024, 768};
    HostSession mSession{mDisplay};
    std::unique_ptr<Child> mProgram;
};

class WaylandWithLayers : public Wayland {
  protected:
    void SetUp() override {
        const std::string obstacle = HostSession::obstacle({"sway", "swaymsg", "swayidle"});
        if (!obstacle.empty()) GTEST_SKIP() << obstacle;
    }

    void startSway(const std::string& configuration = "") {
        mSession.write("sway.conf",
                       "xwayland disable\noutput * bg #ff00ff solid_color\n" + configuration + "\n");
        startCompositor({"sway", "-c", "sway.conf"}, "wayland-1");
    }

    void addMonitor() {
        ASSERT_TRUE(waitUntil([&] { return succeeds("swaymsg -s /tmp/sway-ipc* create_output"); }));
    }
    // Monitors are counted from 1 in the order of their coming.
    void removeMonitor(int number) {
        mDisplay.close(mDisplay.windowWithTitle("wlroots - X11-" + std::to_string(number)));
    }
};

}  // namespace

TEST_F(WaylandWithLayers, CoversMonitorsThatComeAndGoAndASignalEndsAll) {
    startSway();
    start();
    ASSERT_TRUE(runs(1 + 1)) << mSession.log();
    EXPECT_TRUE(showsMapOnUppermost()) << mSession.log();
    const pid_t first = processes()[1];
    addMonitor();
    ASSERT_TRUE(runs(1 + 2));
    EXPECT_TRUE(showsMapOnUppermost()) << mSession.log();

    removeMonitor(1);
    EXPECT_TRUE(runs(1 + 1));
    EXPECT_THAT(processes(), Not(Contains(first)));
    removeMonitor(2);
    EXPECT_TRUE(runs(1)) << mSession.log();
    addMonitor();
    ASSERT_TRUE(runs(1 + 1));
    EXPECT_TRUE(showsMapOnUppermost()) << mSession.log();

    kill(processes().front(), SIGTERM);
    expectNothingLeft();
}

TEST_F(WaylandWithLayers, AnyInputEndsAllButAPointerThatTrembles) {
    const std::vector<std::pair<const char*, std::function<void()>>> inputs{
        {"key", [this] { mDisplay.press("a"); }},
        {"button", [this] { mDisplay.click(); }},
        {"leap", [this] { mDisplay.movePointer(700, 500); }},
        {"slow move", [this] {
             for (int x = 501; x < 510; ++x) mDisplay.movePointer(x, 400);
         }}};
    startSway();
    addMonitor();
    for (const auto& [name, input] : inputs) {
        mDisplay.movePointer(500, 400);
        start();
        EXPECT_TRUE(runs(1 + 2)) << name << mSession.log();
        EXPECT_TRUE(showsMapOnUppermost()) << name << mSession.log();
        EXPECT_FALSE(mDisplay.cursorIsVisible());
        for (const int x : {502, 499, 501}) mDisplay.movePointer(x, 401);
        std::this_thread::sleep_for(std::chrono::milliseconds(300));
        EXPECT_TRUE(runs(1 + 2)) << name;
        input();
        expectNothingLeft();
    }
}

TEST_F(WaylandWithLayers, AProcessThatCrashesIsStartedAnewAndOneThatIsStoppedEndsWithTheOthers) {
    startSway();
    start();
    ASSERT_TRUE(runs(1 + 1)) << mSession.log();
    EXPECT_TRUE(showsMapOnUppermost()) << mSession.log();
    const auto crashed = processes();
    kill(crashed[1], SIGKILL);
    EXPECT_TRUE(waitUntil([&] { return processes().size() == 2 && processes() != crashed; }));
    EXPECT_TRUE(showsMapOnUppermost()) << mSession.log();

    const auto stopped = processes();
    kill(stopped[1], SIGSTOP);
    kill(stopped[0], SIGTERM);
    EXPECT_TRUE(runs(0));
}

TEST_F(WaylandWithLayers, TheOthersEndWithTheFirstProcess) {
    startSway();
    start();
    ASSERT_TRUE(runs(1 + 1)) << mSession.log();
    EXPECT_TRUE(showsMapOnUppermost()) << mSession.log();
    kill(processes().front(), SIGKILL);
    expectNothingLeft();
}

TEST_F(WaylandWithLayers, ReportsWhatIsMissingWhereTheUserSeesIt) {
    startSway();
    start("cp -rL $(dirname " TELLMAR_PROGRAM ")/[tT]ellmar* . && rm Tellmar.saver/resources/map.html && ./" +
          std::string(kProgram).substr(std::string(kProgram).rfind('/') + 1));
    // White letters on the panel in the middle.
    EXPECT_TRUE(waitUntil([&] { return mDisplay.picture().count(256, 192, 768, 576, isNearWhite) > 200; }))
        << mSession.log();
    mDisplay.press("a");
    expectNothingLeft();
}

TEST_F(WaylandWithLayers, ComesAndGoesByTheRecipeForSwayidle) {
    std::smatch recipe;
    const std::string page = contentsOf(SOURCE_FOLDER "/docs/WAYLAND.md");
    ASSERT_TRUE(std::regex_search(page, recipe, std::regex("( +exec swayidle.* timeout )[0-9]+( .*)")));
    mSession.environment["PATH"] = "/usr/libexec/xscreensaver:/usr/bin:/bin";
    mSession.environment["https_proxy"] = "http://127.0.0.1:9";
    startSway(recipe.str(1) + "2" + recipe.str(2));
    for (const char* key : {"a", "Escape"}) {
        mSession.waitForSavers(1 + 1);
        EXPECT_TRUE(waitUntil([&] { return showsSplash(mDisplay.picture(), kMonitor); })) << mSession.log();
        mDisplay.press(key);
        mSession.waitForSavers(0);
        EXPECT_THAT(mSession.remains(), IsEmpty()) << mSession.log();
    }
}

TEST_F(Wayland, WithoutLayersItFillsTheScreenUntilTheUserOrASignalEndsIt) {
    const std::string obstacle = HostSession::obstacle({"cage", "Xwayland"});
    if (!obstacle.empty()) GTEST_SKIP() << obstacle;
    startCompositor({"cage", "--", "sleep", "600"}, "wayland-0");
    const std::vector<std::function<void()>> ends{[this] { mDisplay.press("Escape"); },
                                                  [this] { mDisplay.press("q"); },
                                                  [this] { kill(processes().front(), SIGTERM); }};
    for (const auto& end : ends) {
        start();
        ASSERT_TRUE(runs(1)) << mSession.log();
        EXPECT_TRUE(showsMapOnUppermost()) << mSession.log();
        EXPECT_FALSE(mDisplay.cursorIsVisible());
        end();
        expectNothingLeft();
    }
}
