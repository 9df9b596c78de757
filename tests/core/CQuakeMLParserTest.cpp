#include "quakes/CQuakeMLParser.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <string>

#include "platform/Files.h"
#include "quakes/CQuakeEvent.h"
#include "tests/standins/Clock.h"
#include "tests/standins/QuakeFeed.h"
#include "tests/standins/StandIns.h"
#include "tests/standins/URLLoading.h"

namespace {

using standins::FeedEvent;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::IsNull;
using ::testing::NotNull;
using ::testing::SizeIs;

class CQuakeMLParserTest : public standins::Test {
  protected:
    static std::vector<CQuakeEvent*> parse(const std::string& document) {
        standins::urlLoading().answerToAll = document;
        return CQuakeMLParser().GetEvents();
    }

    // What becomes of one event element: null when it is declined.
    static CQuakeEvent* parseElement(const std::string& event) {
        const auto events = parse(standins::feedOf(event));
        EXPECT_THAT(events, SizeIs(1));
        return events.empty() ? nullptr : events.front();
    }
    static CQuakeEvent* parseEvent(const FeedEvent& event) { return parseElement(event.xml()); }

    static std::string dateRange(int days) {
        char buffer[256];
        CQuakeMLParser().GetDateRange(days, buffer);
        return buffer;
    }
};

TEST_F(CQuakeMLParserTest, AsksOnceForTheLastEightDays) {
    standins::clock().now = 1247650949;  // 2009-07-15T09:42:29Z
    const CQuakeMLParser parser;
    EXPECT_THAT(standins::urlLoading().asked,
                ElementsAre("http://magma.geonet.org.nz/services/quake/quakeml/1.0.1/query?"
                            "startDate=2009-07-07&endDate=2009-07-15&magnitudeLower=4&magnitudeUpper=10&"
                            "outputFormat=quakeml1.0"));
    EXPECT_EQ(parser.GetQueryString(), standins::urlLoading().asked.front());
}

TEST_F(CQuakeMLParserTest, CountsDaysOnTheLocalCalendar) {
    standins::clock().now = 1262646000;  // 2010-01-04T23:00:00Z, noon of the next day in New Zealand
    EXPECT_EQ(dateRange(8), "startDate=2009-12-28&endDate=2010-01-05");
    standins::clock().zone = "UTC0";
    EXPECT_EQ(dateRange(8), "startDate=2009-12-27&endDate=2010-01-04");
    EXPECT_EQ(dateRange(0), "startDate=2010-01-04&endDate=2010-01-04");

    standins::clock().now = 1204545600;  // 2008-03-03T12:00:00Z, in a leap year
    EXPECT_EQ(dateRange(8), "startDate=2008-02-24&endDate=2008-03-03");
}

TEST_F(CQuakeMLParserTest, TakesTheNewDayJustAfterLocalMidnightAcrossAClockChange) {
    standins::clock().now = 1254567900;  // 2009-10-04T00:05+1300; eight days before, clocks stood at +1200
    EXPECT_EQ(dateRange(8), "startDate=2009-09-26&endDate=2009-10-04");
}

TEST_F(CQuakeMLParserTest, ReadsAWholeAnswerInItsOrder) {
    std::string document;
    ASSERT_TRUE(platform::readFile(TEST_DATA "/quakeml-1.0.1.xml", document));
    const auto events = parse(document);
    ASSERT_THAT(events, ElementsAre(NotNull(), IsNull(), NotNull(), NotNull()));

    EXPECT_STREQ(events[0]->mTime, "2011-02-21T23:51:42 +0000");
    EXPECT_EQ(events[0]->mMagnitude, 6.1);
    EXPECT_EQ(events[0]->mLatitude, -43.4935);
    EXPECT_EQ(events[0]->mLongitude, 172.713);
    EXPECT_EQ(events[0]->mDepth, 4.8);

    EXPECT_STREQ(events[2]->mTime, "2011-04-18T13:03:04Z");
    EXPECT_EQ(events[2]->mLatitude, -34.286);
    EXPECT_EQ(events[3]->mLongitude, -176.7203);
}

TEST_F(CQuakeMLParserTest, DeclinesAllButEarthquakes) {
    EXPECT_THAT(parseEvent({.type = "Earthquake"}), IsNull());
    EXPECT_THAT(parseEvent({.type = "earthquake "}), IsNull());
    EXPECT_THAT(parseEvent({.type = "earthquakes"}), IsNull());
    EXPECT_THAT(parseEvent({.type = ""}), IsNull());
    EXPECT_THAT(parseEvent({.type = "earthquake" + std::string(300, 'x')}), IsNull());
    EXPECT_THAT(parseElement("<event/>"), IsNull());
}

TEST_F(CQuakeMLParserTest, DeclinesAnEventThatLacksAnElement) {
    const std::string whole = FeedEvent().xml();
    ASSERT_THAT(parseElement(whole), NotNull());
    for (const std::string name :
         {"type", "origin", "time", "latitude", "longitude", "depth", "magnitude", "mag"}) {
        std::string event = whole;
        event.replace(event.find("<" + name + ">") + 1, name.size(), "other");
        event.replace(event.find("</" + name + ">") + 2, name.size(), "other");
        EXPECT_THAT(parseElement(event), IsNull()) << name;
    }
    EXPECT_THAT(parseEvent({.time = ""}), IsNull());
    EXPECT_THAT(parseEvent({.time = "<value/>"}), IsNull());
}

TEST_F(CQuakeMLParserTest, TakesAMissingNumberForZero) {
    const CQuakeEvent* const event = parseEvent(
        {.latitude = "<value/>", .longitude = "<value>east</value>", .depth = "", .mag = "<other>5</other>"});
    ASSERT_THAT(event, NotNull());
    EXPECT_EQ(event->mLatitude, 0.0);
    EXPECT_EQ(event->mLongitude, 0.0);
    EXPECT_EQ(event->mDepth, 0.0);
    EXPECT_EQ(event->mMagnitude, 0.0);
}

TEST_F(CQuakeMLParserTest, ReadsNumbersAsFarAsTheyGo) {
    const CQuakeEvent* const event = parseEvent({.latitude = "<value>\n  -4.15e1 degrees\n</value>",
                                                 .longitude = "<value>174,5</value>",
                                                 .depth = "<value>1e308</value>",
                                                 .mag = "<value>nan</value>"});
    ASSERT_THAT(event, NotNull());
    EXPECT_EQ(event->mLatitude, -41.5);
    EXPECT_EQ(event->mLongitude, 174.0);
    EXPECT_EQ(event->mDepth, 1e308);
    EXPECT_TRUE(std::isnan(event->mMagnitude));
}

TEST_F(CQuakeMLParserTest, ReadsOnlyTheFirstChildOfAName) {
    const CQuakeEvent* const event = parseEvent({.time = "<value>first</value><value>second</value>",
                                                 .latitude = "<value>1</value><value>2</value>",
                                                 .mag = "<value>5</value></mag><mag><value>9</value>"});
    ASSERT_THAT(event, NotNull());
    EXPECT_STREQ(event->mTime, "first");
    EXPECT_EQ(event->mLatitude, 1.0);
    EXPECT_EQ(event->mMagnitude, 5.0);

    std::string twoOrigins = FeedEvent().xml();
    twoOrigins.insert(twoOrigins.find("<origin>"), "<origin><time/></origin>");
    EXPECT_THAT(parseElement(twoOrigins), IsNull());
}

TEST_F(CQuakeMLParserTest, LeavesATimeEmptyThatDoesNotFit) {
    const CQuakeEvent* const event = parseEvent({.time = "<value>" + std::string(256, '1') + "</value>"});
    ASSERT_THAT(event, NotNull());
    EXPECT_STREQ(event->mTime, "");

    const CQuakeEvent* const fitting = parseEvent({.time = "<value>" + std::string(255, '1') + "</value>"});
    ASSERT_THAT(fitting, NotNull());
    EXPECT_EQ(fitting->mTime, std::string(255, '1'));
}

TEST_F(CQuakeMLParserTest, FindsNothingInAnAnswerOfAnotherShape) {
    const std::string event = FeedEvent().xml();
    EXPECT_THAT(parse(""), IsEmpty());
    EXPECT_THAT(parse("<!DOCTYPE html><html><body>503<br></body></html>"), IsEmpty());
    EXPECT_THAT(parse("<quakeml/>"), IsEmpty());
    EXPECT_THAT(parse("<quakeml>eventParameters</quakeml>"), IsEmpty());
    EXPECT_THAT(parse("<quakeml><eventParameters/></quakeml>"), IsEmpty());
    EXPECT_THAT(parse("<quakeml>" + event + "</quakeml>"), IsEmpty());
    EXPECT_THAT(
        parse("<q:quakeml xmlns:q=\"urn:q\"><eventParameters>" + event + "</eventParameters></q:quakeml>"),
        IsEmpty());
    EXPECT_THAT(parse("<quakeml><eventParameters>" + event), IsEmpty());
    EXPECT_THAT(parse(standins::feedOf("event<Event/><events/><!-- <event/> -->")), IsEmpty());
}

TEST_F(CQuakeMLParserTest, FindsNothingWhenTheServiceCannotBeReached) {
    EXPECT_THAT(CQuakeMLParser().GetEvents(), IsEmpty());
}

}  // namespace
