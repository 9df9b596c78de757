#include "quakes/CQuakeMLParser.h"

#include "tests/TemporaryFolder.h"
#include "tests/standins/StandIns.h"
#include "tests/support/Feed.h"

namespace {

using standins::desktop;
using testing::ElementsAre, testing::IsEmpty, testing::StartsWith;

class CQuakeMLParserTest : public standins::Test {
  protected:
    static std::vector<std::string> parse(const std::string& document) {
        desktop.answerToAll = document;
        std::vector<std::string> quakes;
        for (const CQuakeEvent* each : CQuakeMLParser().GetEvents()) quakes.push_back(told(each));
        return quakes;
    }
    // What becomes of one event element.
    static std::string parseEvent(const std::string& event) {
        const auto events = parse(feedOf(event));
        EXPECT_EQ(events.size(), 1u) << event;
        return events.empty() ? "" : events.front();
    }
};

TEST_F(CQuakeMLParserTest, AsksOnceForTheLastEightDays) {
    desktop.now = 1247650949;                              // 2009-07-15T09:42:29Z
    EXPECT_THAT(CQuakeMLParser().GetEvents(), IsEmpty());  // nobody answers
    EXPECT_THAT(desktop.asked, ElementsAre("http://magma.geonet.org.nz/services/quake/quakeml/1.0.1/query?"
                                           "startDate=2009-07-07&endDate=2009-07-15&magnitudeLower=4&"
                                           "magnitudeUpper=10&outputFormat=quakeml1.0"));
}

TEST_F(CQuakeMLParserTest, CountsDaysOnTheLocalCalendar) {
    const auto range = [](std::time_t now, int days) {
        desktop.now = now;
        char buffer[256];
        CQuakeMLParser().GetDateRange(days, buffer);
        return std::string(buffer);
    };
    // 2010-01-04T23:00:00Z, noon of the next day in New Zealand
    EXPECT_EQ(range(1262646000, 8), "startDate=2009-12-28&endDate=2010-01-05");
    // 2009-10-04T00:05+1300; eight days before, clocks stood at +1200
    EXPECT_EQ(range(1254567900, 8), "startDate=2009-09-26&endDate=2009-10-04");
    desktop.zone = "UTC0";
    EXPECT_EQ(range(1262646000, 0), "startDate=2010-01-04&endDate=2010-01-04");
    EXPECT_EQ(range(1204545600, 8), "startDate=2008-02-24&endDate=2008-03-03");  // in a leap year
}

TEST_F(CQuakeMLParserTest, ReadsAWholeAnswerInItsOrder) {
    EXPECT_THAT(parse(contentsOf(TEST_DATA "/quakeml-1.0.1.xml")),
                ElementsAre("2011-02-21T23:51:42 +0000 M6.1 at -43.4935, 172.713, 4.8 km", "none",
                            StartsWith("2011-04-18T13:03:04Z M"), testing::HasSubstr(", -176.7203, ")));
}

TEST_F(CQuakeMLParserTest, DeclinesAllButEarthquakesAndAnEventThatLacksAnElement) {
    for (const std::string type : {"Earthquake", "earthquake ", "earthquakes", ""})
        EXPECT_EQ(parseEvent(FeedEvent{.type = type}.xml()), "none") << type;
    const std::string whole = FeedEvent().xml();
    ASSERT_NE(parseEvent(whole), "none");
    for (const std::string name :
         {"type", "origin", "time", "latitude", "longitude", "depth", "magnitude", "mag"}) {
        std::string event = whole;
        event.replace(event.find("<" + name + ">") + 1, name.size(), "other");
        event.replace(event.find("</" + name + ">") + 2, name.size(), "other");
        EXPECT_EQ(parseEvent(event), "none") << name;
    }
    for (const std::string& event : {FeedEvent{.time = "<value/>"}.xml(), std::string("<event/>")})
        EXPECT_EQ(parseEvent(event), "none");
}

TEST_F(CQuakeMLParserTest, TakesAMissingNumberForZeroAndATimeThatDoesNotFitForNone) {
    const FeedEvent none{.time = valueOf("x"),
                         .latitude = "<value/>",
                         .longitude = valueOf("east"),
                         .depth = "",
                         .mag = "<other>5</other>"};
    EXPECT_EQ(parseEvent(none.xml()), "x M0 at 0, 0, 0 km");
    const std::string longest(255, '1');
    EXPECT_THAT(parseEvent(FeedEvent{.time = valueOf(longest)}.xml()), StartsWith(longest + " M"));
    EXPECT_THAT(parseEvent(FeedEvent{.time = valueOf(longest + "1")}.xml()), StartsWith(" M"));
}

TEST_F(CQuakeMLParserTest, ReadsOnlyTheFirstChildOfAName) {
    const FeedEvent twice{.time = valueOf("first") + valueOf("second"),
                          .latitude = valueOf(1) + valueOf(2),
                          .mag = valueOf(5) + "</mag><mag>" + valueOf(9)};
    EXPECT_THAT(parseEvent(twice.xml()), StartsWith("first M5 at 1, "));
    std::string twoOrigins = FeedEvent().xml();
    twoOrigins.insert(twoOrigins.find("<origin>"), "<origin><time/></origin>");
    EXPECT_EQ(parseEvent(twoOrigins), "none");
}

TEST_F(CQuakeMLParserTest, FindsNothingInAnAnswerOfAnotherShape) {
    const std::string event = FeedEvent().xml();
    for (const std::string& answer :
         {std::string(), std::string("<!DOCTYPE html><html><body>503<br></body></html>"),
          std::string("<quakeml/>"), std::string("<quakeml>eventParameters</quakeml>"),
          "<feed><eventParameters>" + event + "</eventParameters></feed>", "<quakeml>" + event + "</quakeml>",
          "<quakeml><eventParameters>" + event,
          "<q:quakeml xmlns:q=\"urn:q\"><eventParameters>" + event + "</eventParameters></q:quakeml>",
          feedOf("event<Event/><events/><!-- <event/> -->")})
        EXPECT_THAT(parse(answer), IsEmpty()) << answer;
}

}  // namespace
