#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

#include "quakes/CQuakeEvent.h"
#include "tests/map/MapPage.h"

namespace {

// What the page's modules export, asked in the page's own engine: expressions and their values as JSON.
void expect(const std::vector<std::pair<std::string, std::string>>& cases) {
    MapPage page({640, 360});
    page.show(CQuakeEvent("2016-11-13T11:02:56.346Z", 5, -41, 174, 15));
    page.evaluate(
        "Object.assign(window, ...await Promise.all("
        "['corners', 'geometry', 'placement', 'places', 'projection', 'words']"
        ".map(name => import(`bundle:///map/${name}.js`)))).length");
    for (const auto& [expression, value] : cases) EXPECT_EQ(page.evaluate(expression), value) << expression;
}

TEST(PageFunctionsTest, TheProjectionIsWebMercatorAndTheQuakeInTheMiddleOfWhatIsVisible) {
    const std::string place = "{latitude: -35, longitude: 180}, 8)";
    expect({{"[mercatorX(180), mercatorY(0)]", "[0.5,0.5]"},
            {"Math.abs(mercatorY(-60) - 0.5 - Math.log(2 + Math.sqrt(3)) / (2 * Math.PI)) < 1e-9", "true"},
            {"[-180, 180, -177.5, 540, 360].map(wrapLongitude)", "[180,180,182.5,180,0]"},
            {"(v => [v.x(180), v.y(-35)].map(Math.round))(createView(1290, 730, " + place + ")", "[650,370]"},
            {"createView(7690, 4330, " + place + ".world > 130000", "true"}});
}

TEST(PageFunctionsTest, TheNearestPlaceThatReachesSoFarIsNamedByTheGreatCircle) {
    const std::string distance = "Math.round(distanceBetween(", bearing = "Math.round(1e6 * bearingBetween(";
    expect({{distance + "{latitude: 0, longitude: 179}, {latitude: 0, longitude: 181}) * 10)", "2224"},
            {bearing + "{latitude: 0, longitude: 350}, {latitude: 0, longitude: 10}))", "90000000"},
            {bearing + "{latitude: 0, longitude: 10}, {latitude: 0, longitude: 350}))", "270000000"},
            {"nearestPlace({latitude: -40, longitude: 174}, [[-40.5, 50], [-41, 200], [-42, 3000]]"
             ".map(([latitude, reach]) => ({name: reach, latitude, longitude: 174, reach}))).name",
             "200"},
            {"nearestPlace({latitude: 40, longitude: 10}, namedPlaces())", "null"},
            {"nearestPlace({latitude: -30.2, longitude: 185.3}, namedPlaces()).name", "\"Raoul Island\""}});
}

TEST(PageFunctionsTest, PlacesAreSaidInRoundDistancesAndClassesBeginAtTheirPublishedLimits) {
    expect(
        {{"[['Culverden', 16.8, 56], ['Raoul Island', 313, 112.4], ['Chatham Islands', 1234, 359], ['Taupō', "
          "3, 0]]"
          ".map(([name, distance, bearing]) => placeInWords({}, {name, distance, bearing}))",
          R"(["15 km north-east of Culverden","310 km east of Raoul Island",)"
          R"("1,230 km north of the Chatham Islands","Near Taupō"])"},
         {"placeInWords({latitude: -29.5, longitude: 182.4}, null)", "\"29.50° S, 177.60° W\""},
         {"[-1, 3, 3.99, 5, 6.94, 6.96, 8].map(m => magnitudeClass(m).name)",
          R"(["Very small","Minor","Light","Moderate","Strong","Major","Great"])"},
         {"[12, null].map(magnitudeClass)", "[null,null]"},
         {"[-3, 0, 70, 71, 300, 301, 700].map(d => depthClass(d).name[0]).join('')", "\"sssiidd\""},
         {"[9.96, -0.01, 5000, null].map(depthInWords)",
          R"(["Depth 10 km · shallow","Depth 0 km · shallow","Depth 5000 km",""])"}});
}

TEST(PageFunctionsTest, LabelsGoToTheFirstFreePositionAndTheScaleHasARoundLength) {
    const std::string place = R"js((items => placeLabels(
      items.map(item => ({width: 40, height: 10, offset: 5, symbol: 'dot', symbolSize: 2, lines: [], ...item})),
      {left: 0, top: 0, right: 200, bottom: 100}, [{left: 90, top: 40, right: 110, bottom: 60}],
      box => box.right > 150).map(({item, x, y}) => [item.name, x, y])))js";
    expect(
        {{place +
              "([{name: 'right', x: 20, y: 20}, {name: 'left', x: 84, y: 50}, {name: 'mark', x: 100, y: 50},"
              " {name: 'on it', x: 22, y: 20}, {name: 'edge', x: 199, y: 50}])",
          R"([["right",45,20],["left",59,50]])"},
         // A sea's name moves off the land.
         {place + "([{name: 'sea', x: 140, y: 80, offset: 0, symbol: '', sea: true}])",
          R"([["sea",128,80]])"},
         {"[5, 6, 7, 8, 9].map(zoom => createScale(createView(1290, 730, null, zoom), 0).kilometres)",
          "[200,200,100,50,20]"}});
}

}  // namespace
