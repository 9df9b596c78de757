#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <csignal>

#include "tests/program/Colors.h"
#include "tests/program/ProcessTree.h"
#include "tests/program/Program.h"
#include "tests/program/Waiting.h"
#include "tests/support/LoopbackServer.h"

using testing::IsEmpty;

namespace {

// Ends the program and sees to it that nothing of it is left.
void expectCleanEnd(Program& program, int signal) {
    const std::vector<pid_t> family = descendants(program.id());
    program.signal(signal);
    EXPECT_EQ(0, program.waitForStatus()) << program.errors();
    EXPECT_THAT(program.temporaryFolders(), IsEmpty());
    EXPECT_TRUE(waitUntil([&] { return std::none_of(family.begin(), family.end(), ::isRunning); }));
}

void killWebProcess(const Program& program) {
    const std::vector<pid_t> processes = descendantsRunning(program.id(), "WebKitWebProcess");
    EXPECT_FALSE(processes.empty());
    for (const pid_t each : processes) kill(each, SIGKILL);
}

}  // namespace

TEST(End, ASignalEndsTheSplash) {
    for (const int signal : {SIGTERM, SIGINT, SIGHUP}) {
        TestDisplay display;
        Program program(display);
        program.start({"--demo", "--verbose"});
        ASSERT_TRUE(program.waitForLines("page: loaded"));
        ASSERT_FALSE(program.temporaryFolders().empty());
        ASSERT_FALSE(descendantsRunning(program.id(), "WebKitWebProcess").empty());
        expectCleanEnd(program, signal);
    }
}

TEST(End, ASignalEndsAFadeHalfWay) {
    TestDisplay display;
    Program program(display);
    program.start({"--demo", "--verbose", "--speed", "8"});
    ASSERT_TRUE(waitUntil([&] { return isSplash(display.picture().at(0, 0)); }));
    // A colour between the splash and the map: the first fade goes on.
    ASSERT_TRUE(waitUntil([&] { return !isSplash(display.picture().at(0, 0)); }));
    EXPECT_EQ(0, program.countLines("fade: "));
    expectCleanEnd(program, SIGTERM);
    EXPECT_EQ(1, program.countLines("fade: "));
}

TEST(End, ASignalEndsAFetchThatHangs) {
    for (const int signal : {SIGTERM, SIGINT}) {
        TestDisplay display;
        LoopbackServer server;
        server.keepSilent();
        Program program(display);
        program.start({"--feed", server.url()});
        ASSERT_TRUE(waitUntil([&] { return server.requestCount() == 1; }));
        expectCleanEnd(program, signal);
    }
}

TEST(End, AKeyEndsAWindowOfItsOwn) {
    for (const char* key : {"Escape", "q"}) {
        TestDisplay display;
        Program program(display);
        program.start({"--demo", "--verbose"});
        ASSERT_TRUE(program.waitForLines("page: loaded"));
        display.focus(display.windowWithTitle("Tellmar"));
        display.press(key);
        EXPECT_EQ(0, program.waitForStatus());
    }
}

TEST(End, ClosingTheWindowEndsTheProgram) {
    TestDisplay display;
    Program program(display);
    program.start({"--demo", "--verbose"});
    ASSERT_TRUE(program.waitForLines("page: loaded"));
    display.close(display.windowWithTitle("Tellmar"));
    EXPECT_EQ(0, program.waitForStatus());
}

TEST(WebProcess, OneThatIsKilledIsStartedAgainWithItsPagesBeforeAnyTick) {
    TestDisplay display;
    Program program(display);
    program.start({"--demo", "--verbose", "--speed", "0.1"});
    ASSERT_TRUE(program.waitForLines("page: loaded", 2));
    killWebProcess(program);
    EXPECT_TRUE(program.waitForLines("page: loaded", 4));
    EXPECT_EQ(0, program.countLines("tick"));
    expectCleanEnd(program, SIGTERM);
}

TEST(WebProcess, TheDisplayGoesOnWithoutOne) {
    TestDisplay display;
    Program program(display);
    program.start({"--demo", "--verbose", "--speed", "15"});
    ASSERT_TRUE(program.waitForLines("fade: "));
    const int pages = program.countLines("page: loaded"), fades = program.countLines("fade: ");
    killWebProcess(program);
    EXPECT_TRUE(program.waitForLines("page: the web process ended"));
    EXPECT_TRUE(program.waitForLines("page: loaded", pages + 3));
    EXPECT_TRUE(program.waitForLines("fade: ", fades + 3));
    EXPECT_TRUE(waitUntil([&] { return isMap(display.picture().at(0, 0)); }));
}
