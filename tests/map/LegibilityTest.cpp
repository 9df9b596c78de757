#include <gtest/gtest.h>

#include <string>

#include "quakes/CQuakeEvent.h"
#include "tests/map/Contrast.h"
#include "tests/map/MapPage.h"

namespace {

constexpr double kLeastContrast = 4.5;
constexpr char kTime[] = "2016-11-13T11:02:56.346Z";

struct View {
    int width, height;
    double latitude, longitude;
};

// Snow, shallows, plains, a trench and rings, on the screens of a laptop and of a wall.
constexpr View kViews[] = {{1280, 720, -43.4, 170.2},  {1280, 720, -41.2, 173.2}, {1280, 720, -37.6, 177.2},
                           {1280, 720, -39.4, 176.95}, {1280, 720, -22.3, 170},   {1280, 720, -36.85, 174.76},
                           {3840, 2160, -44.67, 167.9}};

TEST(LegibilityTest, EveryNameAndTextStandsOutFromWhatIsAroundIt) {
    for (const View& view : kViews) {
        SCOPED_TRACE(std::to_string(view.latitude) + ", " + std::to_string(view.longitude));
        MapPage page({double(view.width), double(view.height)});
        ASSERT_TRUE(page.show(CQuakeEvent(kTime, 6, view.latitude, view.longitude, 15)));
        const auto names = contrastsOfNames(page);
        EXPECT_GT(names.size(), 5u);
        for (const auto& [name, ratio] : names) EXPECT_GE(ratio, kLeastContrast) << name;
        const auto texts = contrastsOfTexts(page);
        EXPECT_GT(texts.size(), 5u);
        for (const auto& [text, ratio] : texts) EXPECT_GE(ratio, kLeastContrast) << text;
    }
}

// Differences as CIE76, also as an eye without the cones for green sees the colours (Machado 2009).
constexpr char kNearestMagnitude[] = R"js(await (async () => {
  const {COLOURS} = await import("bundle:///map/layers.js");
  const {markColour} = await import("bundle:///map/mark.js");
  const times = (matrix, vector) => matrix.map(row => row.reduce((sum, part, i) => sum + part * vector[i], 0));
  const XYZ = [[0.4339, 0.3762, 0.1899], [0.2126, 0.7152, 0.0722], [0.0177, 0.1095, 0.8728]];
  const SIGHTS = [[[1, 0, 0], [0, 1, 0], [0, 0, 1]],
    [[0.3673, 0.8606, -0.228], [0.2801, 0.6725, 0.0474], [-0.0118, 0.0429, 0.9689]]];
  const labOf = (colour, sight) => {
    const linear = colour.match(/\d+/g).map(part => ((part / 255 + 0.055) / 1.055) ** 2.4);
    const [x, y, z] = times(XYZ, times(sight, linear)).map(part => Math.cbrt(Math.max(0, part)));
    return [116 * y - 16, 500 * (x - y), 200 * (y - z)];
  };
  return Math.min(...SIGHTS.flatMap(sight => [null, 3, 4, 5, 6, 7, 8].map(magnitude => {
    const [line, mark] = [COLOURS.trench, markColour(magnitude)].map(colour => labOf(colour, sight));
    return Math.hypot(...line.map((part, i) => part - mark[i]));
  })));
})())js";

TEST(LegibilityTest, ThePlateBoundaryHasTheColourOfNoMagnitude) {
    MapPage page({640, 360});
    ASSERT_TRUE(page.show(CQuakeEvent(kTime, 7, -41, 174, 15)));
    EXPECT_GT(std::stod(page.evaluate(kNearestMagnitude)), 20);
}

}  // namespace
