#include <algorithm>
#include <vector>

#include "tests/program/ProgramTest.h"

namespace {

class DisplayCycle : public ProgramTest {
  protected:
    // Two pictures of the screen that are equal, one soon after the other.
    Picture pictureAtRest() const {
        Picture before, now = display.picture();
        waitUntil([&] {
            before = std::move(now);
            now = display.picture();
            return before == now;
        });
        return now;
    }
};

}  // namespace

TEST_F(DisplayCycle, TheSplashFillsTheWindowWithItsTextAtTheUpperLeft) {
    program.start({"--demo"});
    ASSERT_TRUE(waitForCorners(isSplash));
    EXPECT_EQ(0, program.countLines("tellmar: "));  // unasked it tells nothing
    const Picture splash = display.picture();
    EXPECT_LT(200, splash.count(10, 0, 640, 60, isDark));
    EXPECT_EQ(0, splash.count(10, 60, 640, 120, isDark));
    EXPECT_EQ(0, splash.count(0, 0, 1280, 720, isBlack));
    // The faint map lies in the middle.
    EXPECT_LT(1000, splash.count(340, 160, 940, 560, [](const Color& color) { return !isSplash(color); }));
}

TEST_F(DisplayCycle, NoFrameOfAFadeHasAnUnpaintedOrAWhiteEdge) {
    program.start({"--demo", "--verbose", "--speed", "15"});
    ASSERT_TRUE(waitForCorners(isSplash));
    int frames = 0, mixed = 0;
    while (program.countLines("fade: ") < 4 && program.isRunning()) {
        const Picture frame = display.picture();
        ASSERT_EQ(0, frame.countOnEdges(isNearWhite)) << "frame " << frames;
        ASSERT_EQ(0, frame.countOnEdges(isBlack)) << "frame " << frames;
        ++frames;
        mixed += !isSplash(frame.at(0, 0)) && !isMap(frame.at(0, 0));
    }
    EXPECT_TRUE(program.isRunning());
    EXPECT_LT(50, frames);
    EXPECT_LT(0, mixed) << "no picture was taken of the first fade";
    EXPECT_TRUE(isMap(display.picture().at(0, 0)));
}

TEST_F(DisplayCycle, TenQuakesAppearAndThenTheFirstComesAgain) {
    constexpr int kQuakes = 10;
    program.start({"--demo", "--verbose", "--speed", "20"});
    std::vector<Picture> seen;
    for (int fade = 1; fade <= kQuakes; ++fade) {
        ASSERT_TRUE(program.waitForLines("fade: ", fade));
        const Picture quake = pictureAtRest();
        EXPECT_EQ(0, std::count(seen.begin(), seen.end(), quake)) << "quake " << fade << " is not new";
        EXPECT_EQ(0, quake.countOnEdges(isSplash) + quake.countOnEdges(isBlack));
        seen.push_back(quake);
    }
    // The second handed out appeared first, so the eleventh to appear is the one handed out first.
    ASSERT_TRUE(program.waitForLines("fade: ", kQuakes + 1));
    EXPECT_TRUE(seen[1] == pictureAtRest());
}
