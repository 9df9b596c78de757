#include "quakes/CQuakeMLParser.h"

#include "quakes/CQuakeEvent.h"
#include "tests/TemporaryFolder.h"
#include "tests/standins/StandIns.h"
#include "tests/support/Feed.h"

namespace {

using standins::desktop;
using testing::ElementsAre, testing::IsEmpty, testing::IsNull, testing::NotNull;

class CQuakeMLParserTest : public standins::Test {
  protected:
    static std::vector<CQuakeEvent*> parse(const std::string& document) {
        desktop.answerToAll = document;
        return CQuakeMLParser().GetEvents();
    }
    // What becomes of one event element: null when it is declined.
    static CQuakeEvent* parseElement(const std::string& event) {
        const auto events = parse(feedOf(event));
        EXPECT_EQ(events.size(), 1u) << event;
        return events.empty() ? nullptr : events.front();
    }
    // One that must not be declined.
    static CQuakeEvent parseEvent(const FeedEvent& event) {
        const CQuakeEvent* const parsed = parseElement(event.xml());
        EXPECT_THAT(parsed, NotNull());
        return parsed ? *parsed : CQuakeEvent("declined", -1, -1, -1, -1);
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
    const std::string newZealand = desktop.zone;
    const struct {
        std::time_t now;
        std::string zone;
        int days;
        std::string range;
    } cases[] = {
        // 2010-01-04T23:00:00Z, noon of the next day in New Zealand
        {1262646000, newZealand, 8, "startDate=2009-12-28&endDate=2010-01-05"},
        {1262646000, "UTC0", 0, "startDate=2010-01-04&endDate=2010-01-04"},
        // in a leap year
        {1204545600, "UTC0", 8, "startDate=2008-02-24&endDate=2008-03-03"},
        // 2009-10-04T00:05+1300; eight days before, clocks stood at +1200
        {1254567900, newZealand, 8, "startDate=2009-09-26&endDate=2009-10-04"},
    };
    for (const auto& each : cases) {
        desktop.now = each.now;
        desktop.zone = each.zone;
        char buffer[256];
        CQuakeMLParser().GetDateRange(each.days, buffer);
        EXPECT_EQ(buffer, each.range);
    }
}

TEST_F(CQuakeMLParserTest, ReadsAWholeAnswerInItsOrder) {
    const auto events = parse(contentsOf(TEST_DATA "/quakeml-1.0.1.xml"));
    ASSERT_THAT(events, ElementsAre(NotNull(), IsNull(), NotNull(), NotNull()));
    EXPECT_STREQ(events[0]->mTime, "2011-02-21T23:51:42 +0000");
    EXPECT_EQ(events[0]->mMagnitude, 6.1);
    EXPECT_EQ(events[0]->mLatitude, -43.4935);
    EXPECT_EQ(events[0]->mLongitude, 172.713);
    EXPECT_EQ(events[0]->mDepth, 4.8);
    EXPECT_STREQ(events[2]->mTime, "2011-04-18T13:03:04Z");
    EXPECT_EQ(events[3]->mLongitude, -176.7203);
}

TEST_F(CQuakeMLParserTest, DeclinesAllButEarthquakesAndAnEventThatLacksAnElement) {
    for (const std::string type : {"Earthquake", "earthquake ", "earthquakes", ""})
        EXPECT_THAT(parseElement(FeedEvent{.type = type}.xml()), IsNull()) << type;

    const std::string whole = FeedEvent().xml();
    ASSERT_THAT(parseElement(whole), NotNull());
    for (const std::string name :
         {"type", "origin", "time", "latitude", "longitude", "depth", "magnitude", "mag"}) {
        std::string event = whole;
        event.replace(event.find("<" + name + ">") + 1, name.size(), "other");
        event.replace(event.find("</" + name + ">") + 2, name.size(), "other");
        EXPECT_THAT(parseElement(event), IsNull()) << name;
    }
    EXPECT_THAT(parseElement(FeedEvent{.time = "<value/>"}.xml()), IsNull());
    EXPECT_THAT(parseElement("<event/>"), IsNull());
}

TEST_F(CQuakeMLParserTest, TakesAMissingNumberForZeroAndATimeThatDoesNotFitForNone) {
    const CQuakeEvent none = parseEvent(
        {.latitude = "<value/>", .longitude = valueOf("east"), .depth = "", .mag = "<other>5</other>"});
    for (const double number : {none.mLatitude, none.mLongitude, none.mDepth, none.mMagnitude})
        EXPECT_EQ(number, 0.0);
    const std::string longest(255, '1');
    EXPECT_EQ(parseEvent({.time = valueOf(longest)}).mTime, longest);
    EXPECT_STREQ(parseEvent({.time = valueOf(longest + "1")}).mTime, "");
}

TEST_F(CQuakeMLParserTest, ReadsOnlyTheFirstChildOfAName) {
    const CQuakeEvent event = parseEvent({.time = valueOf("first") + valueOf("second"),
                                          .latitude = valueOf(1) + valueOf(2),
                                          .mag = valueOf(5) + "</mag><mag>" + valueOf(9)});
    EXPECT_STREQ(event.mTime, "first");
    EXPECT_EQ(event.mLatitude, 1.0);
    EXPECT_EQ(event.mMagnitude, 5.0);

    std::string twoOrigins = FeedEvent().xml();
    twoOrigins.insert(twoOrigins.find("<origin>"), "<origin><time/></origin>");
    EXPECT_THAT(parseElement(twoOrigins), IsNull());
}

TEST_F(CQuakeMLParserTest, FindsNothingInAnAnswerOfAnotherShape) {
    const std::string event = FeedEvent().xml();
    for (const std::string& answer :
         {std::string(), std::string("<!DOCTYPE html><html><body>503<br></body></html>"),
          std::string("<quakeml/>"), std::string("<quakeml>eventParameters</quakeml>"),
          "<quakeml>" + event + "</quakeml>", "<quakeml><eventParameters>" + event,
          "<q:quakeml xmlns:q=\"urn:q\"><eventParameters>" + event + "</eventParameters></q:quakeml>",
          feedOf("event<Event/><events/><!-- <event/> -->")})
        EXPECT_THAT(parse(answer), IsEmpty()) << answer;
}

}  // namespace
