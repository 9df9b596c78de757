#include "quakes/CQuakeList.h"

#include <gmock/gmock.h>

#include "quakes/CQuakeEvent.h"
#include "tests/standins/QuakeFeed.h"
#include "tests/standins/StandIns.h"
#include "tests/standins/URLLoading.h"

namespace {

using standins::FeedEvent;
using testing::ElementsAre;
using testing::IsNull;
using testing::SizeIs;

using CQuakeListTest = standins::Test;

constexpr double kNone = -1;  // stands for a null entry

std::vector<double> nextMagnitudes(CQuakeList& list, int count) {
    std::vector<double> magnitudes;
    for (int i = 0; i < count; ++i) {
        const CQuakeEvent* const quake = list.GetNextQuake();
        magnitudes.push_back(quake ? quake->mMagnitude : kNone);
    }
    return magnitudes;
}

TEST_F(CQuakeListTest, FetchesTheFeedOnceAndIsEmptyWithoutOne) {
    CQuakeList* const list = CQuakeList::Instance();
    EXPECT_EQ(CQuakeList::Instance(), list);
    EXPECT_THAT(standins::urlLoading().asked, SizeIs(1));
    list->KeepBiggestQuakes(10);
    EXPECT_THAT(nextMagnitudes(*list, 2), ElementsAre(kNone, kNone));
}

TEST_F(CQuakeListTest, WalksBackwardsOverAndOverFromTheLastOfTheTenBiggest) {
    standins::serveQuakes({5.1, 4.0, 6.2, 5.0, 7.8, 4.1, 5.9, 6.0, 4.2, 4.3, 6.6, 4.9});
    CQuakeList list;
    list.KeepBiggestQuakes(10);
    EXPECT_THAT(nextMagnitudes(list, 11), ElementsAre(4.9, 6.6, 4.3, 4.2, 6.0, 5.9, 7.8, 5.0, 6.2, 5.1, 4.9));
    list.KeepBiggestQuakes(10);  // drops nothing and keeps the place
    EXPECT_THAT(nextMagnitudes(list, 2), ElementsAre(6.6, 4.3));
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
    const std::string four = FeedEvent{.mag = "<value>4</value>"}.xml();
    const std::string five = FeedEvent{.mag = "<value>5</value>"}.xml();
    standins::urlLoading().answerToAll = standins::feedOf(four + "<event/>" + five);
    CQuakeList list;
    list.KeepBiggestQuakes(10);
    EXPECT_THAT(nextMagnitudes(list, 4), ElementsAre(5, kNone, 4, 5));
    list.KeepBiggestQuakes(2);
    EXPECT_THAT(nextMagnitudes(list, 3), ElementsAre(5, 4, 5));
}

TEST_F(CQuakeListTest, DumpsTimesThatLookLikeFormats) {
    const FeedEvent event{.time = "<value>%s%n%s%n " + std::string(240, '%') + "</value>",
                          .depth = "<value>1e308</value>"};
    standins::urlLoading().answerToAll = standins::feedOf(event.xml() + "<event/>");
    CQuakeList list;
    list.DumpQuakeInfo();
    EXPECT_THAT(nextMagnitudes(list, 2), ElementsAre(kNone, 6.1));
}

}  // namespace
