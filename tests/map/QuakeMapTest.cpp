#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <fstream>
#include <iterator>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

#include "mappages/MapsPageWriter.h"
#include "platform/Bundle.h"
#include "quakes/CQuakeEvent.h"
#include "tests/TemporaryFolder.h"
#include "tests/map/MapPage.h"

namespace {

CQuakeEvent quakeAt(double latitude, double longitude, double magnitude = 7.8, double depth = 15) {
    return {"2016-11-13T11:02:56.346Z", magnitude, latitude, longitude, depth};
}

// What stands outside the screen's visible part, on something else or beside the panel that holds it.
constexpr char kClashes[] = R"js((() => {
  const {boxes, labels, width, height} = tellmarLayout;
  const things = [...Object.entries(boxes), ...labels.flatMap(({text, boxes: own}) => own.map(box => [text, box]))]
    .filter(([, box]) => box);
  const meet = (a, b) => a.left < b.right && b.left < a.right && a.top < b.bottom && b.top < a.bottom;
  const isWithin = (box, {left, top, right, bottom}) =>
    box.left >= left && box.top >= top && box.right <= right + 0.5 && box.bottom <= bottom + 0.5;
  const faults = things.filter(([, box]) => !isWithin(box, {left: 10, top: 10, right: width, bottom: height}))
    .map(([name]) => name + " is cut off");
  things.forEach(([name, box], i) => faults.push(...things.slice(0, i)
    .filter(([other, another]) => other !== name && meet(box, another))
    .map(([other]) => name + " stands on " + other)));
  labels.forEach(({text}, i) => faults.push(...labels.slice(0, i).filter(other => other.text === text)
    .map(() => text + " stands twice")));
  const boxOf = element => element.getBoundingClientRect();
  const parts = [...document.querySelectorAll("#panel p")].filter(part => boxOf(part).width > 0);
  return faults.concat(parts.filter(part => !isWithin(boxOf(part), boxOf(document.getElementById("panel"))))
    .map(part => part.id + " leaves the panel"));
})())js";

bool isWhite(const Color& color) { return std::min({color.red, color.green, color.blue}) > 215; }

// The point stands in the middle of what the screen shows, or on a high one in what the panel leaves free,
// not below its middle.
void checkMark(MapPage& page) {
    const Picture& picture = page.picture();
    const bool isHigh = picture.height > 1000 && picture.width < 1.4 * picture.height;
    const int bottom = isHigh ? std::stoi(page.evaluate("tellmarLayout.boxes.panel.top")) : picture.height;
    const int x = (picture.width + 10) / 2, y = std::stoi(page.evaluate("tellmarLayout.middle.y"));
    int left = x, right = x;
    while (isWhite(picture.at(left - 1, y))) --left;
    while (isWhite(picture.at(right, y - 1))) ++right;
    EXPECT_LT(left, right);
    EXPECT_NEAR((left + right) / 2.0, x, 0.6);
    EXPECT_LE(y, (bottom + 10) / 2);
    EXPECT_GE(y, isHigh ? picture.height / 4 : (bottom + 10) / 2);
}

void checkPage(MapPage& page, const CQuakeEvent& quake) {
    ASSERT_TRUE(page.show(quake));
    EXPECT_EQ(page.evaluate("tellmarLayout.missing"), "0");
    EXPECT_EQ(page.evaluate(kClashes), "[]");
    checkMark(page);
    EXPECT_TRUE(page.picture() == page.pictureNow()) << "the page went on drawing after its load";
}

// Latitude, longitude, magnitude and depth: all over the region, its corners, the antimeridian and far
// outside.
constexpr double kQuakes[][4] = {
    {-42.69, 173.02, 7.8, 15}, {-36.9, 174.8, 4, 6},   {-41.29, 174.78, 5.2, 33}, {-37.7, 179.7, 7.1, 22},
    {-18.2, -178.4, 7.2, 580}, {-43.9, -176.5, 5, 10}, {-54.7, 158.8, 7.9, 8},    {-13.5, 149, 4.1, 70},
    {-64, -158, 5.1, 10},      {-35, -72, 8.8, 25},
};

class EveryScreen : public testing::TestWithParam<std::pair<int, int>> {};

TEST_P(EveryScreen, ShowsEveryQuakeInTheClear) {
    const auto [width, height] = GetParam();
    MapPage page({double(width), double(height)});
    for (const auto& [latitude, longitude, magnitude, depth] : kQuakes) {
        SCOPED_TRACE(std::to_string(latitude) + ", " + std::to_string(longitude));
        checkPage(page, quakeAt(latitude, longitude, magnitude, depth));
    }
    const double size =
        std::stod(page.evaluate("parseFloat(getComputedStyle(document.getElementById('place')).fontSize)"));
    EXPECT_GE(size, 0.045 * std::min(width, height));
}

INSTANTIATE_TEST_SUITE_P(QuakeMapTest, EveryScreen,
                         testing::Values(std::pair(200, 150), std::pair(700, 300), std::pair(1280, 720),
                                         std::pair(1080, 1920), std::pair(1024, 1024),
                                         std::pair(3840, 2160)));

TEST(QuakeMapTest, TheStruckPlaceIsNamedFirstThenTheBiggestTown) {
    MapPage page({1280, 720});
    ASSERT_TRUE(page.show(quakeAt(-41.9, 174.3)));
    EXPECT_EQ(page.evaluate("tellmarLayout.labels.slice(0, 2).map(label => label.text)"),
              R"(["Seddon","Wellington"])");
    // Where it lies under the mark, a line leads out to its name.
    for (const auto& [name, latitude, longitude] :
         {std::tuple("Wellington", -41.29, 174.78), {"Stewart Island / Rakiura", -47, 167.9}}) {
        ASSERT_TRUE(page.show(quakeAt(latitude, longitude, 6)));
        EXPECT_EQ(page.evaluate("(({text, leader}) => [text, leader.length])(tellmarLayout.labels[0])"),
                  std::string("[\"") + name + "\",2]");
    }
}

TEST(QuakeMapTest, RingsThatDoNotFitStandInTheInsetAndDeepQuakesHaveNone) {
    MapPage page({1280, 720});
    ASSERT_TRUE(page.show(quakeAt(-42.69, 173.02, 5.7, 23)));
    EXPECT_EQ(page.evaluate("[tellmarLayout.rings.view.map(ring => ring.name), tellmarLayout.rings.inset]"),
              R"([["severe","strong","moderate"],["light","weak"]])");
    // The strong ring is 53 km away, where a kilometre has 2.22 pixels.
    EXPECT_EQ(
        page.evaluate(
            "Math.round((({left, right}) => right - left)(tellmarLayout.rings.view[1].box) / 2.22 / 2)"),
        "53");
    ASSERT_TRUE(page.show(quakeAt(-42.69, 173.02, 7.8, 301)));
    EXPECT_EQ(page.evaluate("[tellmarLayout.rings, document.getElementById('shaking').innerText]"),
              R"([{"view":[],"inset":[]},""])");
}

TEST(QuakeMapTest, ThePageSaysWhereItsQuakeStandsInTheList) {
    platform::setGeneratedResource("earthquakes.js", [] {
        return "window.TELLMAR_EARTHQUAKES = {kind: 'service', source: 'Elsewhere', isKept: true, shown: ["
               "{magnitude: 7.9, latitude: -41, longitude: 174, depth: 9},"
               "{magnitude: 7.8, latitude: -42.69, longitude: 173.02, depth: 15}],"
               "answerTime: new Date(Date.now() - 7.5 * 3600e3).toISOString()}";
    });
    MapPage page({1280, 720});
    checkPage(page, quakeAt(-42.69, 173.02));
    EXPECT_EQ(
        page.evaluate("[...document.querySelectorAll('#size span, #list')].map(part => part.innerText)"),
        R"(["2nd biggest of the last eight days","2 of 2 · Elsewhere · as of 7 hours ago"])");
    EXPECT_EQ(
        page.evaluate("/Earthquakes: Elsewhere\\.$/.test(document.getElementById('sources').innerText)"),
        "true");
    platform::setGeneratedResource("earthquakes.js", [] { return ""; });
}

// Screens stay on for months. A page's time is set in its call, which runs before anything is drawn.
TEST(QuakeMapTest, NoPixelBesideTheMarkStaysBrightForMoreThanHalfOfFortyPages) {
    constexpr int kPages = 40;
    const TemporaryFolder folder;
    MapPage page({1280, 720});
    MapsPageWriter writer;
    std::vector<int> bright(1290 * 730);
    for (int i = 0; i < kPages; ++i) {
        const auto& [latitude, longitude, magnitude, depth] = kQuakes[i % std::size(kQuakes)];
        std::string text = writer.insertMapsFunctionCall(
            writer.loadTemplatePage(), quakeAt(latitude, longitude, magnitude, depth), {1290, 730});
        text.insert(text.find("initializeMap("),
                    "Date.now = () => " + std::to_string(i * 15000 + 7000) + "; ");
        std::ofstream("page.html") << text;
        ASSERT_TRUE(page.load(folder.path("page.html")));
        const auto& pixels = page.picture().pixels;
        for (std::size_t at = 0; at < bright.size(); ++at) bright[at] += (pixels[at] & 0x808080) != 0;
    }
    int most = 0;
    for (std::size_t at = 0; at < bright.size(); ++at)
        if (std::hypot(int(at % 1290) - 650, int(at / 1290) - 370) > 40) most = std::max(most, bright[at]);
    EXPECT_LE(most, kPages / 2);
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
      return refused.length;
    })())js"),
              "4");
    EXPECT_EQ(page.evaluate(R"js((() => {
      const names = Object.getOwnPropertyNames(window);
      const blank = document.body.appendChild(document.createElement("iframe")).contentWindow;
      return names.filter(name => !Object.hasOwn(blank, name)).sort();
    })())js"),
              R"(["initializeMap","tellmarLayout","tellmarPicture"])");
}

}  // namespace
