#include "program/EarthquakesScript.h"

#include "program/ShownQuakes.h"
#include "quakes/CQuakeEvent.h"
#include "quakes/CQuakeList.h"
#include "service/EventFeed.h"
#include "tests/standins/StandIns.h"
#include "tests/support/Feed.h"

namespace {

using standins::desktop;
using testing::HasSubstr;

using EarthquakesScriptTest = standins::Test;

std::vector<double> latitudesShown() {
    std::vector<double> latitudes;
    for (const CQuakeEvent* each : quakesAsShown(*CQuakeList::Instance()))
        latitudes.push_back(each->mLatitude);
    return latitudes;
}

// The two views ask for the quakes in turn, and the second one shows its first.
TEST_F(EarthquakesScriptTest, QuakesComeAsTheViewsShowThem) {
    serveDocument(feedOf(FeedEvent{}.xml() + FeedEvent{.type = "other"}.xml()));
    EXPECT_THAT(latitudesShown(), testing::SizeIs(1));
    CQuakeList::mSingletonInstance = nullptr;
    serveQuakes(std::vector<double>(12, 4.0));
    EXPECT_THAT(latitudesShown(), testing::ElementsAre(10, 11, 9, 8, 7, 6, 5, 4, 3, 2));
    EXPECT_EQ(CQuakeList::Instance()->GetNextQuake()->mLatitude, 11);  // the cycle has not moved
}

TEST_F(EarthquakesScriptTest, ThePageLearnsWhatIsShownAndWhereItComesFrom) {
    EventFeed feed({.keepsAnswers = false});
    EXPECT_EQ(earthquakesScript(feed),
              "window.TELLMAR_EARTHQUAKES = {\"shown\": [], \"answerTime\": null, \"isKept\": false, "
              "\"source\": \"GeoNet\", \"kind\": \"service\"};\n");
    EXPECT_FALSE(CQuakeList::mSingletonInstance);

    serveDocument(
        feedOf(FeedEvent{.latitude = valueOf("nan"), .depth = valueOf("33"), .mag = valueOf("6.10")}.xml() +
               FeedEvent{.time = valueOf("soon")}.xml()));
    CQuakeList::Instance();
    std::string data;
    feed.answer(
        "http://x.example/services/quake/quakeml/1.0.1/query?startDate=2026-11-13&endDate=2026-11-21"
        "&magnitudeLower=4&magnitudeUpper=10",
        data);
    const std::string script = earthquakesScript(feed);
    EXPECT_THAT(script,
                HasSubstr("{\"time\": \"2011-02-21T23:51:42Z\", \"magnitude\": 6.1, \"latitude\": null, "
                          "\"longitude\": 172.713, \"depth\": 33}"));
    EXPECT_THAT(script, HasSubstr("{\"time\": null, "));
    EXPECT_THAT(script, HasSubstr("\"answerTime\": \"2009-03-03T01:05:09Z\", \"isKept\": false"));
}

TEST_F(EarthquakesScriptTest, TheSourceIsNamedSafely) {
    const auto sourceOf = [](const EventFeed::Source& source) {
        const std::string script = earthquakesScript(EventFeed(source));
        const std::size_t start = script.find("\"source\": ") + 10;
        return script.substr(start, script.find("};") - start);
    };
    EXPECT_EQ(sourceOf({.service = "https://me@SERVICE.geonet.org.nz:443/q?x=/"}),
              "\"GeoNet\", \"kind\": \"service\"");
    EXPECT_EQ(sourceOf({.service = "http://[::1]:80"}), "\"[::1]\", \"kind\": \"service\"");
    EXPECT_EQ(sourceOf({.document = "https://a.example/b/feed.xml?c=d/e"}),
              "\"feed.xml\", \"kind\": \"document\"");
    EXPECT_EQ(sourceOf({.document = "file:///sample-feed.xml", .isSample = true}),
              "\"Sample earthquakes\", \"kind\": \"sample\"");
    EXPECT_EQ(sourceOf({.document = "file:///a/%3C!--%22%5C%E2%80%A8%0A%C4%81%FF"}),
              "\"\\u003c!--\\u0022\\u005c  \u0101\ufffd\", \"kind\": \"document\"");
}

}  // namespace
