#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <csignal>
#include <filesystem>
#include <fstream>

#include "tests/program/Colors.h"
#include "tests/program/Program.h"
#include "tests/program/Waiting.h"

using testing::HasSubstr;
using testing::IsEmpty;

namespace {

namespace fs = std::filesystem;

// Lets the test take files away: a copy of the program beside a bundle of its own.
void copyProgram(Program& program) {
    const fs::path original = program.executable;
    program.executable = program.path("tellmar");
    fs::copy_file(original, program.executable);
    fs::create_directory(program.path("Tellmar.saver"));
    fs::copy(original.parent_path() / "Tellmar.saver/resources", program.path("Tellmar.saver/resources"),
             fs::copy_options::recursive);
}

void removeResource(const Program& program, const std::string& name) {
    ASSERT_TRUE(fs::remove(program.path("Tellmar.saver/resources/" + name))) << name;
}

// In a host's window.
void startWithoutTemplate(Program& program, TestDisplay& display) {
    copyProgram(program);
    removeResource(program, "map.html");
    program.environment["XSCREENSAVER_WINDOW"] = std::to_string(display.createWindow(1280, 720));
    program.start({"--demo"});
}

}  // namespace

TEST(MissingResource, WithoutItsTemplateTheSaverReportsThatInTheHostsWindowAndEnds) {
    TestDisplay display;
    Program program(display);
    startWithoutTemplate(program, display);
    ASSERT_TRUE(program.waitForLines("map.html"));
    EXPECT_THAT(contentsOf(program.path("error.log")), HasSubstr("map.html"));
    // White letters on the panel in the middle.
    EXPECT_TRUE(waitUntil([&] { return display.picture().count(320, 180, 960, 540, isNearWhite) > 200; }));
    EXPECT_TRUE(program.isRunning());
    EXPECT_EQ(0, program.waitForStatus());
    EXPECT_EQ(1, program.countLines("Failed to read map.html"));
    EXPECT_THAT(program.temporaryFolders(), IsEmpty());
}

TEST(MissingResource, ASignalEndsTheReport) {
    TestDisplay display;
    Program program(display);
    startWithoutTemplate(program, display);
    EXPECT_TRUE(waitUntil([&] { return display.picture().count(320, 180, 960, 540, isNearWhite) > 200; }));
    program.signal(SIGTERM);
    EXPECT_EQ(0, program.waitForStatus());
}

TEST(MissingResource, InAWindowOfItsOwnTheReportWaitsForTheUser) {
    TestDisplay display;
    Program program(display);
    copyProgram(program);
    removeResource(program, "map.html");
    program.start({"--demo"});
    ASSERT_TRUE(program.waitForLines("map.html"));
    waitUntil([&] { return display.picture().count(0, 0, 1280, 720, isNearWhite) > 200; });
    display.focus(display.windowWithTitle("Tellmar"));
    EXPECT_TRUE(program.isRunning());
    display.press("Return");
    EXPECT_EQ(0, program.waitForStatus());
}

TEST(MissingResource, WithoutPicturesTheSplashHasItsBackgroundAndItsTexts) {
    TestDisplay display;
    Program program(display);
    copyProgram(program);
    removeResource(program, "google_maps_nz.png");
    program.start({"--demo"});
    ASSERT_TRUE(waitUntil([&] { return isSplash(display.picture().at(0, 0)); }));
    const Picture splash = display.picture();
    EXPECT_LT(200, splash.count(10, 0, 640, 60, isDark));
    EXPECT_EQ(640 * 360, splash.count(320, 180, 960, 540, isSplash));
}

TEST(MissingResource, WithoutItsPictureThePreviewHasItsText) {
    TestDisplay display;
    Program program(display);
    copyProgram(program);
    removeResource(program, "google_maps_nz_pre.png");
    program.start({"--demo", "--preview", "--verbose"});
    EXPECT_TRUE(program.waitForLines("page: loaded"));
    // Over the splash, whose own text begins lower.
    EXPECT_TRUE(waitUntil([&] { return display.picture().count(5, 2, 565, 9, isDark) > 20; }));
}

TEST(MissingResource, AFolderThatCannotBeWrittenKeepsNoMapAway) {
    for (const char* name : {"HOME", "XDG_CONFIG_HOME", "XDG_CACHE_HOME", "XDG_RUNTIME_DIR", "TMPDIR"}) {
        TestDisplay display;
        Program program(display);
        std::ofstream(program.path("file")) << "in the way";
        program.environment[name] = program.path("file/folder");
        program.start({"--demo", "--verbose", "--speed", "50"});
        EXPECT_TRUE(program.waitForLines("fade: ", 2)) << name << program.errors();
        EXPECT_TRUE(isMap(display.picture().at(0, 0))) << name;
    }
}

TEST(MissingResource, AFolderThatDoesNotExistKeepsNoMapAway) {
    TestDisplay display;
    Program program(display);
    for (const char* name : {"HOME", "XDG_CONFIG_HOME", "XDG_RUNTIME_DIR", "TMPDIR"})
        program.environment[name] = program.path("missing");
    program.start({"--demo", "--verbose", "--speed", "50"});
    EXPECT_TRUE(program.waitForLines("fade: ", 2)) << program.errors();
}
