#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>

#include "platform/URLLoading.h"
#include "quakes/CQuakeEvent.h"
#include "quakes/CQuakeList.h"
#include "tests/TemporaryFolder.h"
#include "tests/map/MapPage.h"
#include "tests/support/Feed.h"

namespace {

struct Place {
    const char* name;
    double latitude, longitude, magnitude, depth;
};

// All over the region, its corners, the antimeridian and far outside.
constexpr Place kPlaces[] = {
    {"Kaikōura", -42.69, 173.02, 7.8, 15},     {"Auckland", -36.9, 174.8, 4.0, 6},
    {"Wellington", -41.29, 174.78, 5.2, 33},   {"Fiordland", -45.4, 167.0, 6.1, 90},
    {"Taupō", -38.7, 176.1, 4.4, 180},         {"East Cape", -37.7, 179.7, 7.1, 22},
    {"Raoul", -29.9, -177.6, 7.4, 30},         {"Tonga", -21.2, -173.9, 8.0, 12},
    {"Fiji", -18.2, -178.4, 7.2, 580},         {"Vanuatu", -17.7, 168.3, 6.5, 220},
    {"Chatham", -43.9, -176.5, 5.0, 10},       {"on 180", -35.0, 180.0, 5.9, 300},
    {"Macquarie", -54.7, 158.8, 7.9, 8},       {"Puysegur", -47.1, 165.6, 6.9, 5},
    {"Southern Alps", -43.5, 170.6, 5.5, 600}, {"north-west", -13.5, 149.0, 4.1, 70},
    {"north-east", -13.5, -158.0, 6.0, 40},    {"south-west", -64.0, 149.0, 4.6, 1},
    {"south-east", -64.0, -158.0, 5.1, 10},    {"Chile", -35.0, -72.0, 8.8, 25},
};

// What stands outside the screen's visible part, and what stands on something else.
constexpr char kClashes[] = R"js((() => {
  const layout = tellmarLayout;
  const things = [...Object.entries(layout.boxes).filter(([, box]) => box).map(([name, box]) => [name, [box]]),
    ...layout.labels.map(({text, boxes}) => [text, boxes])];
  const meet = (a, b) => a.left < b.right && b.left < a.right && a.top < b.bottom && b.top < a.bottom;
  const faults = [];
  things.forEach(([name, boxes], i) => {
    if (boxes.some(b => !(b.left >= 10 && b.top >= 10 && b.right <= layout.width && b.bottom <= layout.height))) {
      faults.push(name + " is cut off");
    }
    things.slice(0, i).filter(([, others]) => boxes.some(b => others.some(o => meet(b, o))))
        .forEach(([other]) => faults.push(name + " stands on " + other));
  });
  const panel = document.getElementById("panel").getBoundingClientRect();
  for (const part of document.querySelectorAll("#panel p")) {
    const box = part.getBoundingClientRect();
    if (box.width > 0 && (box.left < panel.left || box.right > panel.right + 0.5 || box.bottom > panel.bottom + 0.5)) {
      faults.push(part.id + " leaves the panel");
    }
  }
  return faults;
})())js";

CQuakeEvent quakeAt(double latitude, double longitude, double magnitude = 7.8, double depth = 15) {
    return {"2016-11-13T11:02:56.346Z", magnitude, latitude, longitude, depth};
}

bool isWhite(const Color& color) { return color.darkest() > 215; }

// The point stands in the middle of what the screen shows, white inside and coloured rings around it.
void checkMark(const Picture& picture) {
    const int x = (picture.width + 10) / 2, y = (picture.height + 10) / 2;
    for (const auto& [dx, dy] : {std::pair(0, 0), {-1, 0}, {0, -1}, {-1, -1}})
        EXPECT_TRUE(isWhite(picture.at(x + dx, y + dy)));
    int left = x, right = x;
    while (isWhite(picture.at(left - 1, y))) --left;
    while (isWhite(picture.at(right, y))) ++right;
    EXPECT_NEAR((left + right) / 2.0, x, 0.6);
}

void checkPage(MapPage& page) {
    EXPECT_EQ(page.evaluate("tellmarLayout.missing"), "0");
    EXPECT_EQ(page.evaluate(kClashes), "[]");
    checkMark(page.picture());
    EXPECT_TRUE(page.picture() == page.pictureNow()) << "the page went on drawing after its load";
}

// Each quake in turn, through the feed, the list and the writer.
void checkAll(const platform::Size& screen) {
    const TemporaryFolder currentFolder;
    std::string events;
    for (const auto& [name, latitude, longitude, magnitude, depth] : kPlaces)
        events += FeedEvent{.latitude = valueOf(latitude),
                            .longitude = valueOf(longitude),
                            .depth = valueOf(depth),
                            .mag = valueOf(magnitude)}
                      .xml();
    std::ofstream("feed.xml") << feedOf(events);
    platform::setURLResponder([&](const std::string&, std::string& data) {
        return platform::fetchResource("file://" + currentFolder.path("feed.xml"), data);
    });
    CQuakeList list;
    MapPage page(screen);
    for (std::size_t i = std::size(kPlaces); i-- > 0;) {
        SCOPED_TRACE(kPlaces[i].name);
        const CQuakeEvent* const quake = list.GetNextQuake();
        ASSERT_TRUE(quake);
        ASSERT_NEAR(quake->mLatitude, kPlaces[i].latitude, 0.001);
        ASSERT_TRUE(page.show(*quake));
        checkPage(page);
    }
}

TEST(QuakeMapTest, EveryQuakeStandsFreeOnASmallScreen) { checkAll({200, 150}); }
TEST(QuakeMapTest, EveryQuakeStandsFreeOnAUsualScreen) { checkAll({1280, 720}); }
TEST(QuakeMapTest, EveryQuakeStandsFreeOnAnUprightScreen) { checkAll({1080, 1920}); }

TEST(QuakeMapTest, OddScreensStayClear) {
    for (const platform::Size& screen :
         {platform::Size{320, 240}, {640, 400}, {700, 300}, {300, 900}, {2400, 500}, {3840, 2160}}) {
        SCOPED_TRACE(std::to_string(screen.width) + " x " + std::to_string(screen.height));
        MapPage page(screen);
        ASSERT_TRUE(page.show(quakeAt(-41.6, 174.2)));
        checkPage(page);
    }
}

TEST(QuakeMapTest, TextGrowsWithTheScreen) {
    std::vector<double> sizes;
    for (const platform::Size& screen : {platform::Size{1280, 720}, {1920, 1080}, {3840, 2160}}) {
        MapPage page(screen);
        ASSERT_TRUE(page.show(quakeAt(-41.6, 174.2)));
        sizes.push_back(std::stod(
            page.evaluate("parseFloat(getComputedStyle(document.getElementById('place')).fontSize)")));
    }
    EXPECT_NEAR(sizes[1] / sizes[0], 1.5, 0.02);
    EXPECT_NEAR(sizes[2] / sizes[0], 3, 0.04);
}

TEST(QuakeMapTest, NothingButTheBundleIsAskedFor) {
    MapPage page({1280, 720});
    ASSERT_TRUE(page.show(quakeAt(-42.69, 173.02)));
    page.evaluate(R"js((() => {
      for (const address of ["http://127.0.0.1:9/a.png", "https://127.0.0.1:9/b.png", "file:///etc/hostname"]) {
        document.body.append(Object.assign(new Image(), {src: address}));
      }
      document.body.append(Object.assign(document.createElement("script"), {src: "http://127.0.0.1:9/c.js"}));
    })())js");
    const auto& requests = page.requests();
    EXPECT_GT(requests.size(), 20u);
    const auto isOfBundle = [](const std::string& url) { return url.starts_with("bundle:///"); };
    const auto other = std::find_if_not(requests.begin(), requests.end(), isOfBundle);
    ASSERT_TRUE(other != requests.end() && other->ends_with("/Tellmar.html"));
    EXPECT_TRUE(std::all_of(other + 1, requests.end(), isOfBundle));
}

TEST(QuakeMapTest, ShallowAndDeepLookDifferent) {
    MapPage page({1280, 720});
    std::vector<Color> colors;
    for (const double depth : {10.0, 200.0, 600.0}) {
        ASSERT_TRUE(page.show(quakeAt(-30, 187, 7.0, depth)));
        const int reach = static_cast<int>(std::stod(page.evaluate("currentMark.radius / 6")));
        colors.push_back(page.picture().at(650 + reach, 370));
    }
    EXPECT_GT(colors[0].red, colors[0].blue + 60);
    EXPECT_GT(colors[2].blue, colors[2].red + 60);
    EXPECT_GT(colors[1].blue, colors[0].blue + 40);
    EXPECT_GT(colors[1].red, colors[2].red + 20);
}

}  // namespace
