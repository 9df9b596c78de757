#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <string>
#include <vector>

#include "quakes/CQuakeEvent.h"
#include "tests/map/MapPage.h"

namespace {

CQuakeEvent quakeAt(double latitude, double longitude, double magnitude = 7.8, double depth = 15) {
    return {"2016-11-13T11:02:56.346Z", magnitude, latitude, longitude, depth};
}

// What stands outside the screen's visible part, and what stands on something else.
constexpr char kClashes[] = R"js((() => {
  const {boxes, labels, width, height} = tellmarLayout;
  const things = [...Object.entries(boxes).filter(([, box]) => box).map(([name, box]) => [name, [box]]),
    ...labels.map(label => [label.text, label.boxes])];
  const meet = (a, b) => a.left < b.right && b.left < a.right && a.top < b.bottom && b.top < a.bottom;
  const isOut = box => !(box.left >= 10 && box.top >= 10 && box.right <= width && box.bottom <= height);
  const faults = things.filter(([, own]) => own.some(isOut)).map(([name]) => name + " is cut off");
  things.forEach(([name, own], i) => things.slice(0, i).forEach(([other, others]) => {
    if (own.some(box => others.some(another => meet(box, another)))) {
      faults.push(name + " stands on " + other);
    }
  }));
  const panel = document.getElementById("panel").getBoundingClientRect();
  for (const part of document.querySelectorAll("#panel p")) {
    const box = part.getBoundingClientRect();
    if (box.width > 0 && (box.left < panel.left || box.right > panel.right + 0.5 || box.bottom > panel.bottom + 0.5)) {
      faults.push(part.id + " leaves the panel");
    }
  }
  return faults;
})())js";

bool isWhite(const Color& color) { return std::min({color.red, color.green, color.blue}) > 215; }

// The point stands in the middle of what the screen shows.
void checkMark(const Picture& picture) {
    const int x = (picture.width + 10) / 2, y = (picture.height + 10) / 2;
    for (const auto& [dx, dy] : {std::pair(0, 0), {-1, 0}, {0, -1}, {-1, -1}})
        EXPECT_TRUE(isWhite(picture.at(x + dx, y + dy)));
    int left = x, right = x;
    while (isWhite(picture.at(left - 1, y))) --left;
    while (isWhite(picture.at(right, y))) ++right;
    EXPECT_NEAR((left + right) / 2.0, x, 0.6);
}

void checkPage(MapPage& page, const CQuakeEvent& quake) {
    ASSERT_TRUE(page.show(quake));
    EXPECT_EQ(page.evaluate("tellmarLayout.missing"), "0");
    EXPECT_EQ(page.evaluate(kClashes), "[]");
    checkMark(page.picture());
    EXPECT_TRUE(page.picture() == page.pictureNow()) << "the page went on drawing after its load";
}

// Latitude, longitude, magnitude and depth: all over the region, its corners, the antimeridian and far
// outside.
constexpr double kQuakes[][4] = {
    {-42.69, 173.02, 7.8, 15}, {-36.9, 174.8, 4, 6},     {-41.29, 174.78, 5.2, 33}, {-45.4, 167, 6.1, 90},
    {-38.7, 176.1, 4.4, 180},  {-37.7, 179.7, 7.1, 22},  {-29.9, -177.6, 7.4, 30},  {-21.2, -173.9, 8, 12},
    {-18.2, -178.4, 7.2, 580}, {-17.7, 168.3, 6.5, 220}, {-43.9, -176.5, 5, 10},    {-35, 180, 5.9, 300},
    {-54.7, 158.8, 7.9, 8},    {-43.5, 170.6, 5.5, 600}, {-13.5, 149, 4.1, 70},     {-13.5, -158, 6, 40},
    {-64, 149, 4.6, 1},        {-64, -158, 5.1, 10},     {-35, -72, 8.8, 25},       {-47.1, 165.6, 6.9, 5},
};

void checkAll(const platform::Size& screen) {
    MapPage page(screen);
    for (const auto& [latitude, longitude, magnitude, depth] : kQuakes) {
        SCOPED_TRACE(std::to_string(latitude) + ", " + std::to_string(longitude));
        checkPage(page, quakeAt(latitude, longitude, magnitude, depth));
    }
}

TEST(QuakeMapTest, EveryQuakeStandsFreeOnASmallScreen) { checkAll({200, 150}); }
TEST(QuakeMapTest, EveryQuakeStandsFreeOnAUsualScreen) { checkAll({1280, 720}); }
TEST(QuakeMapTest, EveryQuakeStandsFreeOnAnUprightScreen) { checkAll({1080, 1920}); }

TEST(QuakeMapTest, OddScreensStayClearAndTextGrowsWithThem) {
    for (const platform::Size& screen :
         {platform::Size{320, 240}, {700, 300}, {300, 900}, {2400, 500}, {1280, 720}, {3840, 2160}}) {
        SCOPED_TRACE(std::to_string(screen.width) + " x " + std::to_string(screen.height));
        MapPage page(screen);
        checkPage(page, quakeAt(-41.6, 174.2));
        const double size = std::stod(
            page.evaluate("parseFloat(getComputedStyle(document.getElementById('place')).fontSize)"));
        EXPECT_NEAR(size, std::max(9.0, 25 * std::sqrt(screen.width * screen.height) / 960), 0.8);
    }
}

TEST(QuakeMapTest, NothingButTheBundleLoadsAndNothingButTheNamedNamesIsOnTheWindow) {
    MapPage page({640, 360});
    ASSERT_TRUE(page.show(quakeAt(-42.69, 173.02)));
    EXPECT_EQ(page.evaluate(R"js(await (async () => {
      const refused = [];
      addEventListener("securitypolicyviolation", event => refused.push(event.blockedURI));
      for (const [tag, src] of [["img", "http://127.0.0.1:9/"], ["img", "file:///etc/hostname"],
          ["script", "http://127.0.0.1:9/"], ["script", "data:text/javascript,1"]]) {
        const element = document.createElement(tag);
        await new Promise(done => document.body.append(Object.assign(element, {src, onerror: done})));
      }
      await import("http://127.0.0.1:9/").catch(() => {});
      return refused.length;
    })())js"),
              "5");
    EXPECT_EQ(page.evaluate(R"js((() => {
      const names = Object.getOwnPropertyNames(window);
      const blank = document.body.appendChild(document.createElement("iframe")).contentWindow;
      return names.filter(name => !Object.hasOwn(blank, name)).sort();
    })())js"),
              R"(["initializeMap","tellmarLayout","tellmarPicture"])");
}

TEST(QuakeMapTest, ShallowAndDeepLookDifferent) {
    MapPage page({1280, 720});
    std::vector<Color> colors;
    for (const double depth : {10.0, 200.0, 600.0}) {
        ASSERT_TRUE(page.show(quakeAt(-30, 187, 7.0, depth)));
        const double right = std::stod(page.evaluate("tellmarLayout.boxes.mark.right"));
        colors.push_back(page.picture().at(static_cast<int>(650 + (right - 650) / 6), 370));
    }
    EXPECT_GT(colors[0].red, colors[0].blue + 60);
    EXPECT_GT(colors[2].blue, colors[2].red + 60);
    EXPECT_GT(colors[1].blue, colors[0].blue + 40);
    EXPECT_GT(colors[1].red, colors[2].red + 20);
}

}  // namespace
