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
        "['call', 'dates', 'geometry', 'list', 'placement', 'places', 'projection', 'rings', 'scale',"
        " 'shaking', 'words']"
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
            {"[[-30.2, 185.3], [-34.2, 153], [-37.5, 177.2], [-38.4, 175.9]].map(([latitude, longitude]) =>"
             " nearestPlace({latitude, longitude}, namedPlaces()).name)",
             R"(["Raoul Island","Sydney","Whakaari / White Island","Tokoroa"])"}});
}

TEST(PageFunctionsTest, PlacesAreSaidInRoundDistancesAndClassesBeginAtTheirPublishedLimits) {
    expect(
        {{"[['Culverden', 16.8, 56], ['Raoul Island', 313, 112.4], ['Chatham Islands', 1234, 359], ['Taupō', "
          "3, 0]]"
          ".map(([name, distance, bearing]) => placeInWords({}, {name, distance, bearing}).replace(/\\s/g, ' "
          "'))",
          R"(["15 km north-east of Culverden","310 km east of Raoul Island",)"
          R"("1,230 km north of the Chatham Islands","Near Taupō"])"},
         {"placeInWords({latitude: -29.5, longitude: 182.4}, null)", "\"29.50° S, 177.60° W\""},
         {"[-1, 3.96, 6.94, 6.96, 8, 9].map(m => magnitudeClass(quakeFrom(0, 0, m).magnitude))"
          ".map(({name, often}) => name?.slice(0, 5) ?? often.split(' ')[1])",
          R"(["a","13,000","130","major","great","giant"])"},
         {"[12, null].map(magnitudeClass)", "[null,null]"},
         {"[-3, 0, 70, 71, 300, 301, 700].map(d => depthClass(d).name[0]).join('')", "\"sssiidd\""},
         {"[9.96, -0.01, 5000, -1.5, null].map(depth => depthInWords(depth, false))",
          R"(["Depth 10 km · shallow","Depth 0 km · shallow","Depth 5000 km","At the surface",""])"},
         {"[[-39.28, 175.57], [-39.28, 173], [-17.8, 178]].map(([latitude, longitude]) =>"
          " isOnLand({latitude, longitude}))",
          "[true,false,true]"}});
}

// Magnitudes, depths and distances in kilometres; the values are those of the method's own tests.
TEST(PageFunctionsTest, TheShakingIsThatOfThePublishedRelation) {
    const std::string hundredths = ".map(value => Math.round(100 * value) / 100)";
    expect(
        {{"[[6.3, 5], [6.8, 40], [7.1, 11], [6.5, 150], [4.4, 7]].map(quake => "
          "shakingOf(...quake).atEpicentre)" +
              hundredths,
          "[8.86,8.19,9.96,6.23,6.41]"},
         {"[[3.9, 27.4, 110], [4.2, 22.2, 5]].map(([m, h, d]) => shakingAt(shakingOf(m, h), d).toFixed(1))",
          R"(["2.7","5.3"])"},
         {"shakingOf(6, -3).atEpicentre === shakingOf(6, 3).atEpicentre", "true"},
         {"[[6, null], [null, 10], [8, 301]].map(quake => shakingOf(...quake))", "[null,null,null]"},
         {"[[1.5, 150], [4.5, 30], [6.6, 8], [7.8, 15]].map(quake =>"
          " ringsOf(shakingOf(...quake)).map(({radius}) => Math.round(radius)))",
          "[[],[27,75,144],[46,92,165,265,389],[201,311,443,593,755]]"},
         // The stronger, the lighter: an order for any eye.
         {"ringsOf(shakingOf(8, 9)).map(({colour}) => colour.split(',')).map(([r, g, b]) => r * 0.21 + g * "
          "0.72"
          " + b * 0.07).every((light, i, all) => i === 0 || light < all[i - 1] - 12)",
          "true"}});
}

TEST(PageFunctionsTest, TheHardestHitPlaceIsToldBesideThoseOfTheMostPeople) {
    const std::string told =
        "((m, h, latitude, longitude) => shakingInWords(placesToTell(shakingOf(m, h),"
        " {latitude, longitude}, placesOnLand())).replaceAll('\\u00a0', ' '))";
    expect({{told + "(5.7, 23, -42.69, 173.02)",
             "\"Estimated shaking: strong in Culverden, moderate in Christchurch, weak in Wellington\""},
            {told + "(5.2, 10, -29.4, 182)", "\"Estimated shaking: strong on Raoul Island\""},
            {told + "(6.5, 98, -34.286, 179.943)",
             "\"Estimated shaking: weak in Hicks Bay, Whakatāne and Whangamatā\""},
            {told + "(5.4, 30, -22.619, 171.769)", "\"Estimated shaking: moderate on Hunter Island\""},
            {told + "(4.1, 33, -35, 182)", "\"Probably not felt on land\""}});
}

TEST(PageFunctionsTest, TheDateIsSaidWithItsDistanceAndOneThatIsNotUnderstoodAsItIs) {
    const std::string when =
        "(text => Object.values(whenInWords(text, new Date(2026, 10, 21, 16, 20))).join('|'))";
    expect(
        {{"['Wed, 18. November 2026 03:04:05', 'Fri, 20. November 2026 16:19:59', 'Sat, 21. November 2026 "
          "15:31:00',"
          " 'Sat, 21. November 2026 00:20:00', 'Sun, 13. November 2016 12:02:56', 'Sun, 22. November 2026 "
          "16:20:00',"
          " 'Tue, 31. November 2026 16:20:00', 'four o\\'clock'].map" +
              when,
          R"(["3 days ago|Wednesday 18 November, 3:04 am","1 day ago|Friday 20 November, 4:19 pm",)"
          R"("49 minutes ago|Saturday 21 November, 3:31 pm","16 hours ago|Saturday 21 November, 12:20 am",)"
          R"("|Sunday 13 November 2016, 12:02 pm","|Sunday 22 November, 4:20 pm",)"
          R"("|Tue, 31. November 2026 16:20:00","|four o'clock"])"},
         {"['2026-11-21T05:00:00Z', '2026-11-21T06:00:00Z', null, 'soon'].map(time =>"
          " ageInWords(time, new Date('2026-11-21T11:30:00Z')))",
          R"(["6 hours ago","","",""])"}});
}

TEST(PageFunctionsTest, TheQuakeIsFoundInItsListByItsNumbers) {
    const std::string shown =
        "{kind: 'service', source: 'GeoNet', shown: [[5, -41.5], [5.1, -41.5004], [null, null],"
        " [6.96, -38]].map(([magnitude, latitude]) => ({magnitude, latitude, longitude: -179.9996,"
        " depth: 33.004}))}";
    expect({{"[[5.1, -41.5], [6.96, -38], [4, -38]].map(([m, latitude]) =>"
             " listOf(quakeFrom(latitude, 180, m, '33.00km', ''), " +
                 shown + ")).map(({index}) => index)",
             "[1,3,-1]"},
            {"[7, 5.1, 5].map(magnitude => rankInWords(rankOf({magnitude}, " + shown + "), " + shown + "))",
             R"(["Biggest of the last eight days","2nd biggest of the last eight days",)"
             R"("3rd biggest of the last eight days"])"},
            {"listInWordsOf({..." + shown + ", index: 1}, '7 hours ago')",
             "\"2 of 4 · GeoNet · as of 7 hours ago\""},
            {"[undefined, {}].map(earthquakes => listOf({}, earthquakes))", "[null,null]"}});
}

TEST(PageFunctionsTest, LabelsGoToTheFirstFreePositionAndTheScaleHasARoundLength) {
    const std::string place = R"js((items => placeLabels(
      items.map(item => ({width: 40, height: 10, offset: 5, symbol: 'dot', symbolSize: 2, lines: [item.name], ...item})),
      {left: 0, top: 0, right: 200, bottom: 100}, [{left: 90, top: 40, right: 110, bottom: 60}],
      box => box.right > 150).map(({item, x, y}) => [item.name, x, y])))js";
    expect(
        {{place +
              "([{name: 'right', x: 20, y: 20}, {name: 'left', x: 84, y: 50}, {name: 'mark', x: 100, y: 50},"
              " {name: 'on it', x: 22, y: 20}, {name: 'edge', x: 199, y: 50}, {name: 'left', x: 20, y: 80}])",
          R"([["right",45,20],["left",59,50]])"},
         // A sea's name moves off the land.
         {place + "([{name: 'sea', x: 140, y: 80, offset: 0, symbol: '', sea: true, stray: 4}])",
          R"([["sea",128,80]])"},
         // One that lies under the mark stands beside it, and the next one not on its line.
         {"(mark => placeLabels([18, 22].map(x => ({lines: [x], x, y: 50, width: 20, height: 10, mark})),"
          " {left: 0, top: 0, right: 200, bottom: 100}, [mark]).map(({x, y, leader}) => [x, y, leader[1].x]))"
          "({left: 10, top: 40, right: 30, bottom: 60})",
          R"([[20,31,18],[44,50,34]])"},
         {"[5, 6, 7, 8, 9].map(zoom => createScale(createView(1290, 730, null, zoom), 0, {x: 0}).kilometres)",
          "[200,200,100,50,20]"}});
}

}  // namespace
