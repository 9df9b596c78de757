#include <csignal>
#include <filesystem>
#include <fstream>

#include "tests/program/ProgramTest.h"

using testing::HasSubstr;

namespace {

namespace fs = std::filesystem;

class MissingResource : public ProgramTest {
  protected:
    // Has a copy of the program used, beside a bundle of its own that lacks a file.
    void removeResource(const std::string& name) {
        const fs::path original = program.executable, resources = program.path("Tellmar.saver/resources");
        program.executable = program.path("tellmar");
        fs::copy_file(original, program.executable);
        fs::create_directories(resources);
        fs::copy(original.parent_path() / "Tellmar.saver/resources", resources, fs::copy_options::recursive);
        ASSERT_TRUE(fs::remove(resources / name)) << name;
    }
    void startInAHostsWindow() {
        program.environment["XSCREENSAVER_WINDOW"] = std::to_string(display.createWindow(1280, 720));
        program.start({"--demo"});
    }
    // White letters in the middle.
    bool waitForReport() const {
        return waitForPicture(
            [](const Picture& picture) { return picture.count(320, 180, 960, 540, isNearWhite) > 200; });
    }
};

}  // namespace

TEST_F(MissingResource, WithoutItsTemplateTheSaverReportsThatInTheHostsWindowAndEnds) {
    removeResource("map.html");
    startInAHostsWindow();
    ASSERT_TRUE(program.waitForLines("map.html"));
    EXPECT_THAT(contentsOf(program.path("error.log")), HasSubstr("map.html"));
    EXPECT_TRUE(waitForReport());
    EXPECT_TRUE(program.isRunning());
    EXPECT_EQ(0, program.waitForStatus());
    EXPECT_EQ(1, program.countLines("Failed to read map.html"));
    EXPECT_TRUE(program.temporaryFolders().empty());
}

TEST_F(MissingResource, ASignalEndsTheReport) {
    removeResource("map.html");
    startInAHostsWindow();
    EXPECT_TRUE(waitForReport());
    program.signal(SIGTERM);
    EXPECT_EQ(0, program.waitForStatus());
}

TEST_F(MissingResource, InAWindowOfItsOwnTheReportWaitsForTheUser) {
    removeResource("map.html");
    program.start({"--demo"});
    ASSERT_TRUE(program.waitForLines("map.html"));
    EXPECT_TRUE(waitForReport());
    display.focus(display.windowWithTitle("Tellmar"));
    EXPECT_TRUE(program.isRunning());
    display.press("Return");
    EXPECT_EQ(0, program.waitForStatus());
}

TEST_F(MissingResource, WithoutPicturesTheSplashHasItsBackgroundAndItsTexts) {
    removeResource("google_maps_nz.png");
    program.start({"--demo"});
    ASSERT_TRUE(waitForCorners(isSplash));
    const Picture splash = display.picture();
    EXPECT_LT(200, splash.count(10, 0, 640, 60, isDark));
    EXPECT_EQ(640 * 360, splash.count(320, 180, 960, 540, isSplash));
}

TEST_F(MissingResource, AFolderThatCannotBeHadKeepsNoMapAway) {
    for (const char* name : {"HOME", "XDG_CONFIG_HOME", "XDG_CACHE_HOME", "XDG_RUNTIME_DIR", "TMPDIR"}) {
        program.environment[name] = program.path("missing");
        const TestDisplay another;
        Program lacking(another);
        std::ofstream(lacking.path("file")) << "in the way";
        lacking.environment[name] = lacking.path("file/folder");
        lacking.start({"--demo", "--verbose", "--speed", "50"});
        EXPECT_TRUE(lacking.waitForLines("fade: ", 2)) << name << lacking.errors();
        EXPECT_TRUE(isMap(another.picture().at(0, 0))) << name;
    }
    program.start({"--demo", "--verbose", "--speed", "50"});
    EXPECT_TRUE(program.waitForLines("fade: ", 2)) << program.errors();
}
