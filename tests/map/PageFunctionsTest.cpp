#include <gtest/gtest.h>

#include <cmath>
#include <numbers>
#include <string>

#include "quakes/CQuakeEvent.h"
#include "tests/map/MapPage.h"

namespace {

// The page's own functions, asked in the page's own engine.
class PageFunctionsTest : public testing::Test {
  protected:
    PageFunctionsTest() { mPage.show(CQuakeEvent("2016-11-13T11:02:56.346Z", 5, -41, 174, 15)); }

    std::string value(const std::string& expression) { return mPage.evaluate(expression); }
    double number(const std::string& expression) { return std::stod(value(expression)); }

    MapPage mPage{{640, 360}};
};

TEST_F(PageFunctionsTest, TheProjectionIsWebMercator) {
    EXPECT_DOUBLE_EQ(number("mercatorX(180)"), 0.5);
    EXPECT_DOUBLE_EQ(number("mercatorY(0)"), 0.5);
    EXPECT_NEAR(number("mercatorY(-60)"), 0.5 + std::log(2 + std::sqrt(3)) / (2 * std::numbers::pi), 1e-9);
    EXPECT_NEAR(number("latitudeAt(mercatorY(-41.3))"), -41.3, 1e-9);
    EXPECT_EQ(value("[-180, 180, -177.5, 540, 360].map(wrapLongitude)"), "[180,180,182.5,180,0]");
}

TEST_F(PageFunctionsTest, TheQuakeLiesInTheMiddleOfWhatIsVisible) {
    EXPECT_EQ(value("(v => [v.x(180), v.y(-35)].map(Math.round))"
                    "(createView(1290, 730, {latitude: -35, longitude: 180}, 8))"),
              "[650,370]");
    EXPECT_EQ(value("createView(1290, 730, {latitude: -35, longitude: 180}, 8).world"), "65536");
    EXPECT_EQ(value("createView(3850, 2170, {latitude: -35, longitude: 180}, 8).world"), "65536");
    EXPECT_GT(number("createView(7690, 4330, {latitude: -35, longitude: 180}, 8).world"), 130000);
}

TEST_F(PageFunctionsTest, DistanceAndBearingFollowTheGreatCircle) {
    EXPECT_NEAR(number("distanceBetween({latitude: 0, longitude: 179}, {latitude: 0, longitude: 181})"),
                222.4, 0.1);
    EXPECT_NEAR(number("distanceBetween({latitude: -36.849, longitude: 174.763}, "
                       "{latitude: -41.287, longitude: 174.776})"),
                493.5, 0.5);
    EXPECT_NEAR(number("bearingBetween({latitude: 0, longitude: 350}, {latitude: 0, longitude: 10})"), 90,
                1e-9);
    EXPECT_NEAR(number("bearingBetween({latitude: -40, longitude: 174}, {latitude: -41, longitude: 174})"),
                180, 1e-9);
}

TEST_F(PageFunctionsTest, APlaceLendsItsNameOnlySoFar) {
    const std::string ask =
        "(nearestPlace({latitude: -40, longitude: 174}, ["
        "{name: 'hut', latitude: -40.5, longitude: 174, reach: 50},"
        "{name: 'town', latitude: -41, longitude: 174, reach: 200},"
        "{name: 'city', latitude: -42, longitude: 174, reach: 3000}]) || {}).name";
    EXPECT_EQ(value(ask), "\"town\"");
    EXPECT_EQ(value("nearestPlace({latitude: 40, longitude: 10}, namedPlaces())"), "null");
    EXPECT_EQ(value("nearestPlace({latitude: -30.2, longitude: 185.3}, namedPlaces()).name"),
              "\"Raoul Island\"");
}

TEST_F(PageFunctionsTest, PlacesAreSaidInRoundDistancesAndEightDirections) {
    EXPECT_EQ(value("placeInWords({}, {name: 'Culverden', distance: 16.8, bearing: 56})"),
              "\"15 km north-east of Culverden\"");
    EXPECT_EQ(value("placeInWords({}, {name: 'Raoul Island', distance: 313, bearing: 112.4})"),
              "\"310 km east of Raoul Island\"");
    EXPECT_EQ(value("placeInWords({}, {name: 'Chatham Islands', distance: 1234, bearing: 359})"),
              "\"1,230 km north of the Chatham Islands\"");
    EXPECT_EQ(value("placeInWords({}, {name: 'Taupō', distance: 3, bearing: 0})"), "\"Near Taupō\"");
    EXPECT_EQ(value("coordinatesInWords({latitude: -29.5, longitude: 182.4})"), "\"29.50° S, 177.60° W\"");
    EXPECT_EQ(value("coordinatesInWords({latitude: 0, longitude: 180})"), "\"0.00°, 180.00°\"");
    EXPECT_EQ(value("placeInWords(null, null)"), "\"Place not known\"");
}

TEST_F(PageFunctionsTest, ClassesBeginAtTheirPublishedLimits) {
    EXPECT_EQ(value("[-1, 2.9, 3, 3.99, 4.9, 5, 6.94, 6.96, 7.9, 8, 9.5].map(m => magnitudeClass(m).name)"),
              "[\"Very small\",\"Very "
              "small\",\"Minor\",\"Light\",\"Light\",\"Moderate\",\"Strong\",\"Major\",\"Major\","
              "\"Great\",\"Great\"]");
    EXPECT_EQ(value("[12, null].map(magnitudeClass)"), "[null,null]");
    EXPECT_EQ(value("[-3, 0, 70, 71, 300, 301, 700].map(d => depthClass(d).name)"),
              "[\"shallow\",\"shallow\",\"shallow\",\"intermediate\",\"intermediate\",\"deep\",\"deep\"]");
    EXPECT_EQ(value("[15, 9.96, 4.25, -0.01, -3, 5000, null].map(depthInWords)"),
              "[\"Depth 15 km · shallow\",\"Depth 10 km · shallow\",\"Depth 4.3 km · shallow\",\"Depth 0 km "
              "· shallow\","
              "\"3 km above sea level\",\"Depth 5000 km\",\"\"]");
}

TEST_F(PageFunctionsTest, TheCallIsReadAlsoWhenAQuoteBreaksIt) {
    EXPECT_EQ(
        value(R"js(quakeFromCall("initializeMap(-41.123, -174.567, 4.50, '33.00km', 'a'b\"c', 8)"))js"),
        R"js({"place":{"latitude":-41.123,"longitude":185.433},"magnitude":4.5,"depth":33,"date":"a'b\"c","zoom":8})js");
    EXPECT_EQ(
        value(R"js(quakeFromCall("initializeMap(-41.123, 174.567, 4.50, '33.00km', 'cut"))js"),
        R"js({"place":{"latitude":-41.123,"longitude":174.567},"magnitude":4.5,"depth":33,"date":"cut","zoom":8})js");
    EXPECT_EQ(value("quakeFromCall('')"),
              R"js({"place":null,"magnitude":null,"depth":null,"date":"","zoom":8})js");
}

TEST_F(PageFunctionsTest, LabelsGoToTheFirstFreePosition) {
    const std::string place =
        "(items => placeLabels(items.map(item => ({width: 40, height: 10, offset: 5, symbol: 'dot', "
        "symbolSize: 2,"
        " lines: [], ...item})), {left: 0, top: 0, right: 200, bottom: 100},"
        " [{left: 90, top: 40, right: 110, bottom: 60}], box => box.right > 150)"
        ".map(({item, x, y}) => [item.name, x, y]))";
    EXPECT_EQ(
        value(place +
              "([{name: 'right', x: 20, y: 20}, {name: 'left', x: 84, y: 50}, {name: 'mark', x: 100, y: 50},"
              " {name: 'on it', x: 22, y: 20}, {name: 'edge', x: 199, y: 50}])"),
        "[[\"right\",45,20],[\"left\",59,50]]");
    EXPECT_EQ(value(place + "([{name: 'sea', x: 140, y: 80, offset: 0, symbol: '', sea: true}])"),
              "[[\"sea\",128,80]]")
        << "a sea's name moves off the land";
}

TEST_F(PageFunctionsTest, TheScaleHasARoundLength) {
    EXPECT_EQ(value("[1, 1.9, 4.99, 5, 19, 99, 130].map(roundLength)"), "[1,1,2,5,10,50,100]");
}

}  // namespace
