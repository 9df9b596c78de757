#include "quakes/CQuakeMLParser.h"

#include "tests/TemporaryFolder.h"
#include "tests/standins/StandIns.h"
#include "tests/support/Feed.h"

namespace {

using standins::desktop;
using testing::ElementsAre, testing::HasSubstr, testing::IsEmpty, testing::StartsWith;

using CQuakeMLParserTest = standins::Test;

std::vector<std::string> parse(const std::string& document) {
    desktop.answerToAll = document;
    std::vector<std::string> quakes;
    for (const CQuakeEvent* each : CQuakeMLParser().GetEvents()) quakes.push_back(told(each));
    return quakes;
}

// What becomes of one event element.
std::string parseEvent(const std::string& event) { return parse(feedOf(event)).at(0); }

TEST_F(CQuakeMLParserTest, AsksForTheLastEightDaysOfTheLocalCalendar) {
    const auto askedAt = [](std::time_t now) {
        desktop.now = now;
        CQuakeMLParser();
        return desktop.asked.back();
    };
    EXPECT_EQ(askedAt(1247650949),  // 2009-07-15T09:42:29Z
              "http://magma.geonet.org.nz/services/quake/quakeml/1.0.1/query?startDate=2009-07-07&"
              "endDate=2009-07-15&magnitudeLower=4&magnitudeUpper=10&outputFormat=quakeml1.0");
    // 2010-01-04T23:00:00Z, noon of the next day in New Zealand
    EXPECT_THAT(askedAt(1262646000), HasSubstr("startDate=2009-12-28&endDate=2010-01-05"));
    // 2009-10-04T00:05+1300; eight days before, clocks stood at +1200
    EXPECT_THAT(askedAt(1254567900), HasSubstr("startDate=2009-09-26&endDate=2009-10-04"));
    desktop.zone = "UTC0";
    EXPECT_THAT(askedAt(1204545600), HasSubstr("startDate=2008-02-24&endDate=2008-03-03"));  // in a leap year
}

TEST_F(CQuakeMLParserTest, ReadsAWholeAnswerInItsOrder) {
    EXPECT_THAT(parse(contentsOf(TEST_DATA "/quakeml-1.0.1.xml")),
                ElementsAre("2011-02-21T23:51:42 +0000 M6.1 at -43.4935, 172.713, 4.8 km", "none",
                            StartsWith("2011-04-18T13:03:04Z M"), HasSubstr(", -176.7203, ")));
}

TEST_F(CQuakeMLParserTest, DeclinesWhatIsNoWholeEarthquake) {
    for (const std::string type : {"Earthquake", "earthquake ", "earthquakes", ""})
        EXPECT_EQ(parseEvent(FeedEvent{.type = type}.xml()), "none") << type;
    for (const std::string name :
         {"type", "origin", "time", "latitude", "longitude", "depth", "magnitude", "mag"}) {
        std::string event = FeedEvent().xml();
        event.replace(event.find("<" + name + ">") + 1, name.size(), "other");
        event.replace(event.find("</" + name + ">") + 2, name.size(), "other");
        EXPECT_EQ(parseEvent(event), "none") << name;
    }
    EXPECT_EQ(parseEvent(FeedEvent{.time = "<value/>"}.xml()), "none");
}

TEST_F(CQuakeMLParserTest, TakesAValueThatCannotBeReadForNone) {
    const FeedEvent event{.time = valueOf(std::string(256, '1')),
                          .latitude = "<value/>",
                          .longitude = valueOf("east"),
                          .depth = "",
                          .mag = "<other>5</other>"};
    EXPECT_EQ(parseEvent(event.xml()), " M0 at 0, 0, 0 km");
    const std::string longest(255, '1');
    EXPECT_THAT(parseEvent(FeedEvent{.time = valueOf(longest)}.xml()), StartsWith(longest + " M"));
}

TEST_F(CQuakeMLParserTest, FindsNothingInAnAnswerOfAnotherShape) {
    const std::string event = FeedEvent().xml(), events = "<eventParameters>" + event + "</eventParameters>";
    for (const std::string& answer :
         {std::string(), std::string("<quakeml>eventParameters</quakeml>"), "<feed>" + events + "</feed>",
          "<quakeml>" + event + "</quakeml>", "<quakeml>" + events,
          "<q:quakeml xmlns:q=\"urn:q\">" + events + "</q:quakeml>",
          feedOf("event<Event/><events/><!-- <event/> -->")})
        EXPECT_THAT(parse(answer), IsEmpty()) << answer;
}

}  // namespace
