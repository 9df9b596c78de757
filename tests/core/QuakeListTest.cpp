#include <deque>
#include <limits>

#include "quakes/CQuakeEvent.h"
#include "quakes/CQuakeList.h"
#include "quakes/CQuakeListProcessor.h"
#include "quakes/CQuakeMLParser.h"
#include "tests/TemporaryFolder.h"
#include "tests/standins/StandIns.h"
#include "tests/support/Feed.h"

namespace {

using standins::desktop;
using testing::ElementsAre, testing::HasSubstr, testing::IsEmpty, testing::SizeIs, testing::StartsWith;

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double kNull = -1;  // stands for a null entry

TEST(CQuakeEventTest, TheZoneReplacesTheFractionWithinTheField) {
    const std::string almostFull(250, 'x');
    const std::pair<std::string, std::string> cases[] = {
        {"1.2.3", "1.2 +0000"},
        {almostFull + ".123Z", almostFull + " +000"},
        {almostFull + "xxxxxx", almostFull + "xxxxx"},
    };
    for (const auto& [given, kept] : cases) EXPECT_EQ(CQuakeEvent(given.c_str(), 0, 0, 0, 0).mTime, kept);
}

// The positions of the entries with these magnitudes that a selection of count keeps; -1 for a null entry.
std::vector<int> kept(int count, const std::vector<double>& magnitudes) {
    std::deque<CQuakeEvent> events;
    std::vector<CQuakeEvent*> list;
    for (const double each : magnitudes) {
        events.emplace_back("", each, static_cast<double>(list.size()), 0.0, 0.0);
        list.push_back(each == kNull ? nullptr : &events.back());
    }
    CQuakeListProcessor::KeepBiggestQuakes(count, list);
    std::vector<int> positions;
    for (const CQuakeEvent* each : list) positions.push_back(each ? static_cast<int>(each->mLatitude) : -1);
    return positions;
}

TEST(CQuakeListProcessorTest, TheBiggestStayInTheirOldOrder) {
    EXPECT_THAT(kept(2, {4, 6, 5, 6}), ElementsAre(1, 3));
    EXPECT_THAT(kept(10, {4, 6, 5}), ElementsAre(0, 1, 2));
    EXPECT_THAT(kept(-3, {4, 5}), IsEmpty());
    for (const double first : {kNull, kNaN})  // to go
        EXPECT_THAT(kept(2, {first, 4, first, 6, first}), ElementsAre(1, 3));
    EXPECT_THAT(kept(2, {kNull, kNaN, -2}), ElementsAre(1, 2));
    const CQuakeEvent small("b", 4, 9, 9, 9), big("a", 5, 0, 0, 0);
    EXPECT_TRUE(small < big && !(big < small) && !compare(nullptr, nullptr));
}

using CQuakeListTest = standins::Test;

std::vector<double> next(CQuakeList& list, int count) {
    std::vector<double> magnitudes;
    for (int i = 0; i < count; ++i) {
        const CQuakeEvent* const quake = list.GetNextQuake();
        magnitudes.push_back(quake ? quake->mMagnitude : kNull);
    }
    return magnitudes;
}

TEST_F(CQuakeListTest, WalksBackwardsOverTheBiggest) {
    serveQuakes({5.1, 4.0, 6.2, 5.0, 7.8, 4.1});
    CQuakeList list;
    EXPECT_THAT(next(list, 1), ElementsAre(4.1));
    list.KeepBiggestQuakes(4);  // the place lies beyond its end now
    EXPECT_THAT(next(list, 5), ElementsAre(7.8, 5.0, 6.2, 5.1, 7.8));
}

TEST_F(CQuakeListTest, HandsOutNullEntriesToo) {
    // Texts of the feed must never be taken for formats.
    const FeedEvent odd{.time = valueOf("%s%n%s%n " + repeated("%", 240)), .depth = valueOf("1e308")};
    serveDocument(feedOf("<event/>" + odd.xml()));
    CQuakeList list;
    EXPECT_THAT(next(list, 3), ElementsAre(6.1, kNull, 6.1));
}

class CQuakeMLParserTest : public standins::Test {
  protected:
    // What becomes of one event element.
    static std::string parseEvent(const std::string& event) { return quakesIn(feedOf(event)).at(0); }
};

TEST_F(CQuakeMLParserTest, AsksForTheLastEightDaysOfTheLocalCalendar) {
    const auto askedAt = [](std::time_t now) {
        desktop.now = now;
        CQuakeMLParser();
        return desktop.requests.back().url;
    };
    EXPECT_EQ(askedAt(1247650949),  // 2009-07-15T09:42:29Z
              "http://magma.geonet.org.nz/services/quake/quakeml/1.0.1/query?startDate=2009-07-07&"
              "endDate=2009-07-15&magnitudeLower=4&magnitudeUpper=10&outputFormat=quakeml1.0");
    // 2010-01-04T23:00:00Z, noon of the next day in New Zealand
    EXPECT_THAT(askedAt(1262646000), HasSubstr("startDate=2009-12-28&endDate=2010-01-05"));
    // 2009-10-04T00:05+1300; eight days before, clocks stood at +1200
    EXPECT_THAT(askedAt(1254567900), HasSubstr("startDate=2009-09-26&endDate=2009-10-04"));
}

TEST_F(CQuakeMLParserTest, ReadsAWholeAnswerInItsOrder) {
    EXPECT_THAT(quakesIn(contentsOf(TEST_DATA "/quakeml-1.0.1.xml")),
                ElementsAre("2011-02-21T23:51:42 +0000 M6.1 at -43.4935, 172.713, 4.8 km", "none",
                            StartsWith("2011-04-18T13:03:04Z M"), HasSubstr(", -176.7203, ")));
}

TEST_F(CQuakeMLParserTest, DeclinesWhatIsNoWholeEarthquake) {
    EXPECT_EQ(parseEvent(FeedEvent{.type = "earthquakes"}.xml()), "none");
    EXPECT_EQ(parseEvent(FeedEvent{.time = "<value/>"}.xml()), "none");
    for (const std::string name :
         {"type", "origin", "time", "latitude", "longitude", "depth", "magnitude", "mag"}) {
        std::string event = FeedEvent().xml();
        event.replace(event.find("<" + name + ">") + 1, name.size(), "other");
        event.replace(event.find("</" + name + ">") + 2, name.size(), "other");
        EXPECT_EQ(parseEvent(event), "none") << name;
    }
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
         {std::string(), "<feed>" + events + "</feed>", "<quakeml>" + event + "</quakeml>",
          "<quakeml>" + events, feedOf("event<Event/><events/><!-- <event/> -->")})
        EXPECT_THAT(quakesIn(answer), IsEmpty()) << answer;
}

}  // namespace
