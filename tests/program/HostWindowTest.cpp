#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/program/Colors.h"
#include "tests/program/Program.h"
#include "tests/program/Waiting.h"
#include "tests/support/LoopbackServer.h"

using testing::IsEmpty;

namespace {

constexpr char kNoTicks[] = "0.1";  // the first after 150 seconds

// The still image has no large part in the splash's colour, and its text begins above the splash's.
bool isPictureOfPreview(const Picture& picture, int width, int height) {
    return picture.count(0, 0, width, height, isPink) + picture.count(0, 0, width, height, isBlack) == 0 &&
           picture.count(0, 0, width, height, isSplash) < width * height / 4 &&
           picture.count(5, 2, width, 9, isDark) > 20;
}

bool isMapOfSize(const Picture& picture, int width, int height) {
    const int corners = isMap(picture.at(0, 0)) + isMap(picture.at(width - 1, 0)) +
                        isMap(picture.at(0, height - 1)) + isMap(picture.at(width - 1, height - 1));
    return corners == 4 && picture.count(0, 0, width, height, isPink) == 0;
}

std::string hexadecimal(TestDisplay::Window window) {
    char text[32];
    std::snprintf(text, sizeof text, "0x%lx", window);
    return text;
}

}  // namespace

TEST(HostWindow, ThePictureFillsAWindowGivenByOption) {
    TestDisplay display(1024, 768);
    Program program(display);
    const auto window = display.createWindow(1024, 768);
    EXPECT_TRUE(display.cursorIsVisible());
    program.start({"--demo", "--speed", "30", "-root", "-window-id", hexadecimal(window)});
    EXPECT_TRUE(waitUntil([&] { return isMapOfSize(display.picture(), 1024, 768); }));
    EXPECT_FALSE(display.cursorIsVisible());
}

TEST(HostWindow, ThePictureFillsAWindowOfAnotherDepthGivenByTheEnvironment) {
    TestDisplay display(1024, 768);
    Program program(display);
    program.environment["XSCREENSAVER_WINDOW"] = hexadecimal(display.createWindowWithAlpha(1024, 768));
    program.start({"--demo", "--speed", "30", "--root"});
    EXPECT_TRUE(waitUntil([&] { return isMapOfSize(display.picture(), 1024, 768); }));
}

TEST(HostWindow, ThePictureFollowsTheWindowsSize) {
    TestDisplay display(1280, 720);
    Program program(display);
    const auto window = display.createWindow(800, 600);
    program.start({"--demo", "--speed", "20", "--window-id", hexadecimal(window)});
    for (const auto& [width, height] : {std::pair{800, 600}, {1280, 720}, {700, 400}}) {
        display.resizeWindow(window, width, height);
        EXPECT_TRUE(waitUntil([&] { return isMapOfSize(display.picture(), width, height); })) << width;
    }
}

TEST(HostWindow, TheProgramEndsWithItsWindowAtWhateverMoment) {
    for (const char* moment : {"fetch ", "page: loaded", "tick 2", "fade: ", "tick 3"}) {
        TestDisplay display;
        Program program(display);
        const auto window = display.createWindow(1280, 720);
        program.start({"--demo", "--verbose", "--speed", "20", "--window-id", hexadecimal(window)});
        EXPECT_TRUE(program.waitForLines(moment)) << moment;
        display.destroyWindow(window);
        EXPECT_EQ(0, program.waitForStatus()) << moment << program.errors();
        EXPECT_THAT(program.temporaryFolders(), IsEmpty()) << moment;
    }
}

TEST(HostWindow, TheProgramEndsWithItsWindowWhileItWaitsForTheFeed) {
    TestDisplay display;
    LoopbackServer server;
    server.keepSilent();
    Program program(display);
    const auto window = display.createWindow(1280, 720);
    program.start({"--feed", server.url(), "--window-id", hexadecimal(window)});
    ASSERT_TRUE(waitUntil([&] { return server.requestCount() == 1; }));
    display.destroyWindow(window);
    EXPECT_EQ(0, program.waitForStatus()) << program.errors();
}

TEST(Preview, AWindowOfItsOwnShowsTheStillImageAtOnce) {
    TestDisplay display;
    Program program(display);
    program.start({"--demo", "--speed", kNoTicks, "--preview"});
    EXPECT_TRUE(waitUntil([&] { return isPictureOfPreview(display.picture(), 565, 317); }));
}

TEST(Preview, ASmallWindowOfTheHostShowsTheStillImageAtOnce) {
    for (const auto& [width, height] : {std::pair{565, 317}, {200, 150}}) {
        TestDisplay display;
        Program program(display);
        program.start(
            {"--demo", "--speed", kNoTicks, "--window-id", hexadecimal(display.createWindow(width, height))});
        EXPECT_TRUE(waitUntil([&] { return isPictureOfPreview(display.picture(), width, height); })) << width;
    }
}

TEST(Preview, TheStillImageFollowsTheWindowsSize) {
    TestDisplay display;
    Program program(display);
    const auto window = display.createWindow(200, 150);
    program.start({"--demo", "--speed", kNoTicks, "--preview", "--window-id", hexadecimal(window)});
    ASSERT_TRUE(waitUntil([&] { return isPictureOfPreview(display.picture(), 200, 150); }));
    display.resizeWindow(window, 500, 300);
    EXPECT_TRUE(waitUntil([&] { return isPictureOfPreview(display.picture(), 500, 300); }));
}
