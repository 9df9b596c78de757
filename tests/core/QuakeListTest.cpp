#include <deque>
#include <limits>

#include "quakes/CQuakeEvent.h"
#include "quakes/CQuakeList.h"
#include "quakes/CQuakeListProcessor.h"
#include "tests/standins/StandIns.h"
#include "tests/support/Feed.h"

namespace {

using standins::desktop;
using testing::ElementsAre, testing::IsEmpty, testing::SizeIs;

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double kNull = -1;  // stands for a null entry

TEST(CQuakeEventTest, TheZoneReplacesTheFractionWithinTheField) {
    const std::string almostFull(250, 'x');
    const std::pair<std::string, std::string> cases[] = {
        {"2009-07-15T09:22:29Z", "2009-07-15T09:22:29Z"}, {"1.2.3", "1.2 +0000"},
        {almostFull + ".123Z", almostFull + " +000"},     {almostFull + "xxxx.", almostFull + "xxxx "},
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
    EXPECT_THAT(kept(1, {4, 6, 5}), ElementsAre(1));
    EXPECT_THAT(kept(2, {4, 6, 5, 6}), ElementsAre(1, 3));
    for (const int count : {3, 10}) EXPECT_THAT(kept(count, {4, 6, 5}), ElementsAre(0, 1, 2));
    for (const int count : {0, -3}) EXPECT_THAT(kept(count, {4, 5}), IsEmpty());
    const CQuakeEvent small("b", 4, 9, 9, 9), big("a", 5, 0, 0, 0);
    EXPECT_TRUE(small < big && !(big < small) && !compare(nullptr, nullptr));
}

TEST(CQuakeListProcessorTest, NullEntriesGoFirst) {
    EXPECT_THAT(kept(2, {kNull, 4, kNull, 6, kNull}), ElementsAre(1, 3));
    EXPECT_THAT(kept(2, {kNaN, 4, kNaN, 6, kNaN}), ElementsAre(1, 3));
    EXPECT_THAT(kept(2, {kNull, kNaN, -2}), ElementsAre(1, 2));
    EXPECT_THAT(kept(3, {kNull, 4, kNull, 6, kNull}), SizeIs(3));
    EXPECT_THAT(kept(10, std::vector<double>(100'000, kNaN)), SizeIs(10));
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

TEST_F(CQuakeListTest, FetchesTheFeedOnce) {
    CQuakeList* const list = CQuakeList::Instance();
    EXPECT_EQ(CQuakeList::Instance(), list);
    EXPECT_THAT(desktop.asked, SizeIs(1));
    EXPECT_THAT(next(*list, 2), ElementsAre(kNull, kNull));  // nobody answered
}

TEST_F(CQuakeListTest, WalksBackwardsOverTheBiggest) {
    serveQuakes({5.1, 4.0, 6.2, 5.0, 7.8, 4.1});
    CQuakeList list;
    EXPECT_THAT(next(list, 1), ElementsAre(4.1));
    list.KeepBiggestQuakes(4);  // the place lies beyond its end now
    EXPECT_THAT(next(list, 5), ElementsAre(7.8, 5.0, 6.2, 5.1, 7.8));
}

TEST_F(CQuakeListTest, HandsOutNullEntriesWhileThereIsRoom) {
    const std::string format = "%s%n%s%n " + repeated("%", 240);  // must never be taken for one
    const FeedEvent odd{.time = valueOf(format), .depth = valueOf("1e308")};
    desktop.answerToAll = feedOf(FeedEvent{.mag = valueOf(4)}.xml() + "<event/>" + odd.xml());
    CQuakeList list;
    list.KeepBiggestQuakes(10);
    EXPECT_THAT(next(list, 4), ElementsAre(6.1, kNull, 4, 6.1));
    list.KeepBiggestQuakes(2);
    EXPECT_THAT(next(list, 3), ElementsAre(6.1, 4, 6.1));
}

}  // namespace
