#include "tests/program/ProgramTest.h"

namespace {

constexpr char kNoTicks[] = "0.1";  // the first after 150 seconds

class HostWindow : public ProgramTest {
  protected:
    // A map without a part of the window that the program has not painted.
    bool waitForMap(int width, int height) const {
        return waitForPicture([&](const Picture& picture) {
            return picture.hasCorners(width, height, isMap) &&
                   picture.count(0, 0, width, height, isPink) == 0;
        });
    }
    // The still image has no large part in the splash's colour, and its text begins above the splash's.
    bool waitForPreview(int width, int height) const {
        return waitForPicture([&](const Picture& picture) {
            return picture.count(0, 0, width, height, isPink) + picture.count(0, 0, width, height, isBlack) ==
                       0 &&
                   picture.count(0, 0, width, height, isSplash) < width * height / 4 &&
                   picture.count(5, 2, width, 9, isDark) > 20;
        });
    }
};

}  // namespace

TEST_F(HostWindow, ThePictureFillsAWindowGivenByOptionAndFollowsItsSize) {
    const auto window = display.createWindow(800, 600);
    EXPECT_TRUE(display.cursorIsVisible());
    program.start({"--demo", "--speed", "20", "-root", "-window-id", hexadecimal(window)});
    for (const auto& [width, height] : {std::pair{800, 600}, {1280, 720}, {700, 400}}) {
        display.resizeWindow(window, width, height);
        EXPECT_TRUE(waitForMap(width, height)) << width;
        EXPECT_FALSE(display.cursorIsVisible());
    }
}

TEST_F(HostWindow, ThePictureFillsAWindowOfAnotherDepthGivenByTheEnvironment) {
    program.environment["XSCREENSAVER_WINDOW"] = hexadecimal(display.createWindowWithAlpha(1024, 700));
    program.start({"--demo", "--speed", "30", "--root"});
    EXPECT_TRUE(waitForMap(1024, 700));
}

TEST_F(HostWindow, TheProgramEndsWithItsWindowAtWhateverMoment) {
    for (const char* moment : {"fetch ", "page: loaded", "tick 2", "fade: ", "tick 3"}) {
        TestDisplay another;
        Program ending(another);
        const auto window = another.createWindow(1280, 720);
        ending.start({"--demo", "--verbose", "--speed", "20", "--window-id", hexadecimal(window)});
        EXPECT_TRUE(ending.waitForLines(moment)) << moment;
        another.destroyWindow(window);
        EXPECT_EQ(0, ending.waitForStatus()) << moment << ending.errors();
        EXPECT_TRUE(ending.temporaryFolders().empty()) << moment;
    }
}

TEST_F(HostWindow, APreviewOfItsOwnShowsTheStillImageAtOnce) {
    program.start({"--demo", "--speed", kNoTicks, "--preview"});
    EXPECT_TRUE(waitForPreview(565, 317));
}

TEST_F(HostWindow, ASmallWindowShowsTheStillImageAtOnceAndItFollowsItsSize) {
    const auto window = display.createWindow(200, 150);
    program.start({"--demo", "--speed", kNoTicks, "--window-id", hexadecimal(window)});
    ASSERT_TRUE(waitForPreview(200, 150));
    display.resizeWindow(window, 565, 317);
    EXPECT_TRUE(waitForPreview(565, 317));
}
