#include <algorithm>
#include <csignal>

#include "tests/program/ProcessTree.h"
#include "tests/program/ProgramTest.h"
#include "tests/support/LoopbackServer.h"

namespace {

class End : public ProgramTest {
  protected:
    // Ends a program and sees to it that nothing of it is left.
    static void expectCleanEnd(Program& ending, int signal) {
        const std::vector<pid_t> family = descendants(ending.id());
        ending.signal(signal);
        EXPECT_EQ(0, ending.waitForStatus()) << ending.errors();
        EXPECT_TRUE(ending.temporaryFolders().empty());
        EXPECT_TRUE(waitUntil([&] { return std::none_of(family.begin(), family.end(), ::isRunning); }));
    }
    void killWebProcess() const {
        const std::vector<pid_t> processes = descendantsRunning(program.id(), "WebKitWebProcess");
        EXPECT_FALSE(processes.empty());
        for (const pid_t each : processes) kill(each, SIGKILL);
    }
};

}  // namespace

TEST_F(End, ASignalEndsTheSplash) {
    for (const int signal : {SIGTERM, SIGINT, SIGHUP}) {
        const TestDisplay another;
        Program ending(another);
        ending.start({"--demo", "--verbose"});
        ASSERT_TRUE(ending.waitForLines("page: loaded"));
        ASSERT_FALSE(ending.temporaryFolders().empty());
        expectCleanEnd(ending, signal);
    }
}

TEST_F(End, ASignalEndsAFadeHalfWay) {
    program.start({"--demo", "--verbose", "--speed", "8"});
    ASSERT_TRUE(waitForCorners(isSplash));
    // A colour between the splash and the map: the first fade goes on.
    ASSERT_TRUE(waitForPicture([](const Picture& picture) { return !isSplash(picture.at(0, 0)); }));
    EXPECT_EQ(0, program.countLines("fade: "));
    expectCleanEnd(program, SIGTERM);
    EXPECT_EQ(1, program.countLines("fade: "));
}

TEST_F(End, ASignalOrTheEndOfTheHostsWindowEndsAFetchThatHangs) {
    LoopbackServer server;
    server.keepSilent();
    program.start({"--feed", server.url()});
    ASSERT_TRUE(waitUntil([&] { return server.requestCount() == 1; }));
    expectCleanEnd(program, SIGTERM);

    Program hosts(display);
    const auto window = display.createWindow(1280, 720);
    hosts.start({"--feed", server.url(), "--window-id", hexadecimal(window)});
    ASSERT_TRUE(waitUntil([&] { return server.requestCount() == 2; }));
    display.destroyWindow(window);
    EXPECT_EQ(0, hosts.waitForStatus()) << hosts.errors();
}

TEST_F(End, AKeyOrClosingEndsAWindowOfItsOwn) {
    for (const std::string key : {"Escape", "q", ""}) {
        TestDisplay another;
        Program ending(another);
        ending.start({"--demo", "--verbose"});
        ASSERT_TRUE(ending.waitForLines("page: loaded"));
        const auto window = another.windowWithTitle("Tellmar");
        another.focus(window);
        key.empty() ? another.close(window) : another.press(key);
        EXPECT_EQ(0, ending.waitForStatus()) << key;
    }
}

TEST_F(End, AWebProcessThatIsKilledIsStartedAgainWithItsPagesBeforeAnyTick) {
    program.start({"--demo", "--verbose", "--speed", "0.1"});
    ASSERT_TRUE(program.waitForLines("page: loaded", 2));
    killWebProcess();
    EXPECT_TRUE(program.waitForLines("page: loaded", 4));
    EXPECT_EQ(0, program.countLines("tick"));
    expectCleanEnd(program, SIGTERM);
}

TEST_F(End, TheDisplayGoesOnWithoutAWebProcess) {
    program.start({"--demo", "--verbose", "--speed", "15"});
    ASSERT_TRUE(program.waitForLines("fade: "));
    const int pages = program.countLines("page: loaded"), fades = program.countLines("fade: ");
    killWebProcess();
    EXPECT_TRUE(program.waitForLines("page: the web process ended"));
    EXPECT_TRUE(program.waitForLines("page: loaded", pages + 3));
    EXPECT_TRUE(program.waitForLines("fade: ", fades + 3));
    EXPECT_TRUE(waitForCorners(isMap));
}
