#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/program/Colors.h"
#include "tests/program/Program.h"
#include "tests/program/Waiting.h"

using testing::IsEmpty;

namespace {

bool isPictureOfPreview(const Picture& picture, int width, int height) {
    const int left = picture.count(0, 0, width, height, isPink);
    const int unpainted = picture.count(0, 0, width, height, isBlack);
    const int text = picture.count(5, 0, width, height / 4, isDark);
    return left == 0 && unpainted < text && text > 20;
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

TEST(HostWindow, TheProgramEndsWithItsWindow) {
    TestDisplay display;
    Program splash(display), map(display);
    const auto first = display.createWindow(1280, 720), second = display.createWindow(1280, 720);
    splash.start({"--demo", "--verbose", "--window-id", hexadecimal(first)});
    map.start({"--demo", "--verbose", "--speed", "20", "--window-id", hexadecimal(second)});
    EXPECT_TRUE(splash.waitForLines("page: loaded"));
    EXPECT_TRUE(map.waitForLines("fade: "));
    display.destroyWindow(first);
    display.destroyWindow(second);
    EXPECT_EQ(0, splash.waitForStatus()) << splash.errors();
    EXPECT_EQ(0, map.waitForStatus()) << map.errors();
    EXPECT_THAT(splash.temporaryFolders(), IsEmpty());
    EXPECT_THAT(map.temporaryFolders(), IsEmpty());
}

TEST(Preview, AWindowOfItsOwnShowsTheStillImageAtOnce) {
    TestDisplay display;
    Program program(display);
    program.start({"--demo", "--preview"});
    EXPECT_TRUE(waitUntil([&] { return isPictureOfPreview(display.picture(), 565, 317); }));
}

TEST(Preview, ASmallWindowOfTheHostShowsTheStillImageAtOnce) {
    for (const auto& [width, height] : {std::pair{565, 317}, {200, 150}}) {
        TestDisplay display;
        Program program(display);
        program.start({"--demo", "--window-id", hexadecimal(display.createWindow(width, height))});
        EXPECT_TRUE(waitUntil([&] { return isPictureOfPreview(display.picture(), width, height); })) << width;
    }
}

TEST(Preview, TheStillImageFollowsTheWindowsSize) {
    TestDisplay display;
    Program program(display);
    const auto window = display.createWindow(200, 150);
    program.start({"--demo", "--preview", "--window-id", hexadecimal(window)});
    ASSERT_TRUE(waitUntil([&] { return isPictureOfPreview(display.picture(), 200, 150); }));
    display.resizeWindow(window, 500, 300);
    EXPECT_TRUE(waitUntil([&] { return isPictureOfPreview(display.picture(), 500, 300); }));
}
