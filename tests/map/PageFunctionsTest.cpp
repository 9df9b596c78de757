#include <gtest/gtest.h>

#include "quakes/CQuakeEvent.h"
#include "tests/map/MapPage.h"

namespace {

// The page's own functions, asked in the page's own engine.
class PageFunctionsTest : public testing::Test {
  protected:
    PageFunctionsTest() { mPage.show(CQuakeEvent("2016-11-13T11:02:56.346Z", 5, -41, 174, 15)); }

    // Pairs of an expression and its value as JSON.
    void expect(const std::vector<std::pair<std::string, const char*>>& cases) {
        for (const auto& [expression, value] : cases)
            EXPECT_EQ(mPage.evaluate(expression), value) << expression;
    }

    MapPage mPage{{640, 360}};
};

TEST_F(PageFunctionsTest, TheProjectionIsWebMercator) {
    expect({{"[mercatorX(180), mercatorY(0)]", "[0.5,0.5]"},
            {"Math.abs(mercatorY(-60) - 0.5 - Math.log(2 + Math.sqrt(3)) / (2 * Math.PI)) < 1e-9", "true"},
            {"Math.abs(latitudeAt(mercatorY(-41.3)) + 41.3) < 1e-9", "true"},
            {"[-180, 180, -177.5, 540, 360].map(wrapLongitude)", "[180,180,182.5,180,0]"}});
}

TEST_F(PageFunctionsTest, TheQuakeLiesInTheMiddleOfWhatIsVisible) {
    const std::string place = "{latitude: -35, longitude: 180}, 8)";
    expect({{"(v => [v.x(180), v.y(-35)].map(Math.round))(createView(1290, 730, " + place + ")", "[650,370]"},
            {"createView(1290, 730, " + place + ".world", "65536"},
            {"createView(3850, 2170, " + place + ".world", "65536"},
            {"createView(7690, 4330, " + place + ".world > 130000", "true"}});
}

TEST_F(PageFunctionsTest, DistanceAndBearingFollowTheGreatCircle) {
    const std::string distance = "Math.round(distanceBetween(", bearing = "Math.round(1e6 * bearingBetween(";
    expect({{distance + "{latitude: 0, longitude: 179}, {latitude: 0, longitude: 181}) * 10)", "2224"},
            {distance + "{latitude: -36.849, longitude: 174.763}, {latitude: -41.287, longitude: 174.776}))",
             "493"},
            {bearing + "{latitude: 0, longitude: 350}, {latitude: 0, longitude: 10}))", "90000000"},
            {bearing + "{latitude: -40, longitude: 174}, {latitude: -41, longitude: 174}))", "180000000"}});
}

TEST_F(PageFunctionsTest, APlaceLendsItsNameOnlySoFar) {
    expect({{"nearestPlace({latitude: -40, longitude: 174}, ["
             "{name: 'hut', latitude: -40.5, longitude: 174, reach: 50},"
             "{name: 'town', latitude: -41, longitude: 174, reach: 200},"
             "{name: 'city', latitude: -42, longitude: 174, reach: 3000}]).name",
             "\"town\""},
            {"nearestPlace({latitude: 40, longitude: 10}, namedPlaces())", "null"},
            {"nearestPlace({latitude: -30.2, longitude: 185.3}, namedPlaces()).name", "\"Raoul Island\""}});
}

TEST_F(PageFunctionsTest, PlacesAreSaidInRoundDistancesAndEightDirections) {
    expect({{"placeInWords({}, {name: 'Culverden', distance: 16.8, bearing: 56})",
             "\"15 km north-east of Culverden\""},
            {"placeInWords({}, {name: 'Raoul Island', distance: 313, bearing: 112.4})",
             "\"310 km east of Raoul Island\""},
            {"placeInWords({}, {name: 'Chatham Islands', distance: 1234, bearing: 359})",
             "\"1,230 km north of the Chatham Islands\""},
            {"placeInWords({}, {name: 'Taupō', distance: 3, bearing: 0})", "\"Near Taupō\""},
            {"placeInWords(null, null)", "\"Place not known\""},
            {"coordinatesInWords({latitude: -29.5, longitude: 182.4})", "\"29.50° S, 177.60° W\""},
            {"coordinatesInWords({latitude: 0, longitude: 180})", "\"0.00°, 180.00°\""}});
}

TEST_F(PageFunctionsTest, ClassesBeginAtTheirPublishedLimits) {
    expect({{"[-1, 2.9, 3, 3.99, 4.9, 5, 6.94, 6.96, 7.9, 8, 9.5].map(m => magnitudeClass(m).name)",
             "[\"Very small\",\"Very small\",\"Minor\",\"Light\",\"Light\",\"Moderate\",\"Strong\",\"Major\","
             "\"Major\",\"Great\",\"Great\"]"},
            {"[12, null].map(magnitudeClass)", "[null,null]"},
            {"[-3, 0, 70, 71, 300, 301, 700].map(d => depthClass(d).name)",
             "[\"shallow\",\"shallow\",\"shallow\",\"intermediate\",\"intermediate\",\"deep\",\"deep\"]"},
            {"[15, 9.96, 4.25, -0.01, -3, 5000, null].map(depthInWords)",
             "[\"Depth 15 km · shallow\",\"Depth 10 km · shallow\",\"Depth 4.3 km · shallow\","
             "\"Depth 0 km · shallow\",\"3 km above sea level\",\"Depth 5000 km\",\"\"]"}});
}

TEST_F(PageFunctionsTest, TheCallIsReadAlsoWhenAQuoteBreaksIt) {
    expect(
        {{R"js(quakeFromCall("initializeMap(-41.123, -174.567, 4.50, '33.00km', 'a'b\"c', 8)"))js",
          R"js({"place":{"latitude":-41.123,"longitude":185.433},"magnitude":4.5,"depth":33,"date":"a'b\"c","zoom":8})js"},
         {R"js(quakeFromCall("initializeMap(-41.123, 174.567, 4.50, '33.00km', 'cut"))js",
          R"js({"place":{"latitude":-41.123,"longitude":174.567},"magnitude":4.5,"depth":33,"date":"cut","zoom":8})js"},
         {"quakeFromCall('')", R"js({"place":null,"magnitude":null,"depth":null,"date":"","zoom":8})js"}});
}

TEST_F(PageFunctionsTest, LabelsGoToTheFirstFreePositionAndTheScaleHasARoundLength) {
    const std::string place =
        "(items => placeLabels(items.map(item => ({width: 40, height: 10, offset: 5, symbol: 'dot', "
        "symbolSize: 2, lines: [], ...item})), {left: 0, top: 0, right: 200, bottom: 100},"
        " [{left: 90, top: 40, right: 110, bottom: 60}], box => box.right > 150)"
        ".map(({item, x, y}) => [item.name, x, y]))";
    expect(
        {{place +
              "([{name: 'right', x: 20, y: 20}, {name: 'left', x: 84, y: 50}, {name: 'mark', x: 100, y: 50},"
              " {name: 'on it', x: 22, y: 20}, {name: 'edge', x: 199, y: 50}])",
          "[[\"right\",45,20],[\"left\",59,50]]"},
         // A sea's name moves off the land.
         {place + "([{name: 'sea', x: 140, y: 80, offset: 0, symbol: '', sea: true}])", "[[\"sea\",128,80]]"},
         {"[1, 1.9, 4.99, 5, 19, 99, 130].map(roundLength)", "[1,1,2,5,10,50,100]"}});
}

}  // namespace
