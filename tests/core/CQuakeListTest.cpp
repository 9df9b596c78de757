#include "quakes/CQuakeList.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "quakes/CQuakeEvent.h"
#include "tests/standins/QuakeFeed.h"
#include "tests/standins/StandIns.h"
#include "tests/standins/URLLoading.h"

namespace {

using ::testing::ElementsAre;
using ::testing::IsNull;
using ::testing::SizeIs;

constexpr double kNone = -1;  // stands for a null entry

class CQuakeListTest : public standins::Test {
  protected:
    static std::vector<double> nextMagnitudes(CQuakeList& list, int count) {
        std::vector<double> magnitudes;
        for (int i = 0; i < count; ++i) {
            const CQuakeEvent* const quake = list.GetNextQuake();
            magnitudes.push_back(quake ? quake->mMagnitude : kNone);
        }
        return magnitudes;
    }
};

TEST_F(CQuakeListTest, FetchesTheFeedOnce) {
    standins::serveQuakes({5});
    CQuakeList* const list = CQuakeList::Instance();
    EXPECT_EQ(CQuakeList::Instance(), list);
    EXPECT_THAT(standins::urlLoading().asked, SizeIs(1));
}

TEST_F(CQuakeListTest, IsEmptyWithoutAFeed) {
    CQuakeList* const list = CQuakeList::Instance();
    list->KeepBiggestQuakes(10);
    EXPECT_THAT(list->GetNextQuake(), IsNull());
    EXPECT_THAT(list->GetNextQuake(), IsNull());
}

TEST_F(CQuakeListTest, WalksBackwardsOverAndOver) {
    standins::serveQuakes({4, 5, 6});
    CQuakeList list;
    EXPECT_THAT(nextMagnitudes(list, 5), ElementsAre(6, 5, 4, 6, 5));

    standins::serveQuakes({7});
    CQuakeList one;
    EXPECT_THAT(nextMagnitudes(one, 3), ElementsAre(7, 7, 7));
}

TEST_F(CQuakeListTest, StartsItsCycleAtTheLastOfTheTenBiggest) {
    standins::serveQuakes({5.1, 4.0, 6.2, 5.0, 7.8, 4.1, 5.9, 6.0, 4.2, 4.3, 6.6, 4.9});
    CQuakeList list;
    list.KeepBiggestQuakes(10);
    EXPECT_THAT(nextMagnitudes(list, 11), ElementsAre(4.9, 6.6, 4.3, 4.2, 6.0, 5.9, 7.8, 5.0, 6.2, 5.1, 4.9));
}

TEST_F(CQuakeListTest, KeepsItsPlaceThroughASelectionThatDropsNothing) {
    standins::serveQuakes({4, 5, 6});
    CQuakeList list;
    list.KeepBiggestQuakes(10);
    EXPECT_THAT(nextMagnitudes(list, 1), ElementsAre(6));
    list.KeepBiggestQuakes(10);
    EXPECT_THAT(nextMagnitudes(list, 2), ElementsAre(5, 4));
}

TEST_F(CQuakeListTest, WrapsWhenTheListBecameShorterThanItsPlace) {
    standins::serveQuakes({8, 7, 6, 5, 4});
    CQuakeList list;
    EXPECT_THAT(nextMagnitudes(list, 1), ElementsAre(4));
    list.KeepBiggestQuakes(2);
    EXPECT_THAT(nextMagnitudes(list, 3), ElementsAre(7, 8, 7));
    list.KeepBiggestQuakes(0);
    EXPECT_THAT(list.GetNextQuake(), IsNull());
}

TEST_F(CQuakeListTest, HandsOutNullEntriesWhileThereIsRoomForThem) {
    const std::string declined = "<event/>";
    const std::string four = standins::eventOfMagnitude(4).xml();
    const std::string five = standins::eventOfMagnitude(5).xml();
    standins::urlLoading().answerToAll = standins::feedOf(four + declined + five);
    CQuakeList list;
    list.KeepBiggestQuakes(10);
    EXPECT_THAT(nextMagnitudes(list, 4), ElementsAre(5, kNone, 4, 5));
    list.KeepBiggestQuakes(2);
    EXPECT_THAT(nextMagnitudes(list, 3), ElementsAre(5, 4, 5));
}

TEST_F(CQuakeListTest, DumpsTimesThatLookLikeFormats) {
    standins::FeedEvent event;
    event.time = "<value>%s%n%s%n " + std::string(240, '%') + "</value>";
    event.depth = "<value>1e308</value>";
    standins::urlLoading().answerToAll = standins::feedOf(event.xml() + "<event/>");
    CQuakeList list;
    list.DumpQuakeInfo();
    EXPECT_THAT(nextMagnitudes(list, 2), ElementsAre(kNone, 6.1));
}

}  // namespace
