#include "quakes/CQuakeList.h"

#include "quakes/CQuakeEvent.h"
#include "tests/standins/StandIns.h"
#include "tests/support/Feed.h"

namespace {

using standins::desktop;
using testing::ElementsAre;

constexpr double kNone = -1;  // stands for a null entry

class CQuakeListTest : public standins::Test {
  protected:
    static std::vector<double> next(CQuakeList& list, int count) {
        std::vector<double> magnitudes;
        for (int i = 0; i < count; ++i) {
            const CQuakeEvent* const quake = list.GetNextQuake();
            magnitudes.push_back(quake ? quake->mMagnitude : kNone);
        }
        return magnitudes;
    }
};

TEST_F(CQuakeListTest, FetchesTheFeedOnceAndIsEmptyWithoutOne) {
    CQuakeList* const list = CQuakeList::Instance();
    EXPECT_EQ(CQuakeList::Instance(), list);
    EXPECT_EQ(desktop.asked.size(), 1u);
    list->KeepBiggestQuakes(10);
    EXPECT_THAT(next(*list, 2), ElementsAre(kNone, kNone));
}

TEST_F(CQuakeListTest, WalksBackwardsOverAndOverFromTheLastOfTheTenBiggest) {
    serveQuakes({5.1, 4.0, 6.2, 5.0, 7.8, 4.1, 5.9, 6.0, 4.2, 4.3, 6.6, 4.9});
    CQuakeList list;
    list.KeepBiggestQuakes(10);
    EXPECT_THAT(next(list, 11), ElementsAre(4.9, 6.6, 4.3, 4.2, 6.0, 5.9, 7.8, 5.0, 6.2, 5.1, 4.9));
    list.KeepBiggestQuakes(10);  // drops nothing and keeps the place
    EXPECT_THAT(next(list, 2), ElementsAre(6.6, 4.3));
}

TEST_F(CQuakeListTest, WrapsWhenTheListBecameShorterThanItsPlace) {
    serveQuakes({8, 7, 6, 5, 4});
    CQuakeList list;
    EXPECT_THAT(next(list, 1), ElementsAre(4));
    list.KeepBiggestQuakes(2);
    EXPECT_THAT(next(list, 3), ElementsAre(7, 8, 7));
    list.KeepBiggestQuakes(0);
    EXPECT_THAT(next(list, 1), ElementsAre(kNone));
}

TEST_F(CQuakeListTest, HandsOutNullEntriesWhileThereIsRoomAndDumpsTimesThatLookLikeFormats) {
    const FeedEvent odd{.time = valueOf("%s%n%s%n " + repeated("%", 240)), .depth = valueOf("1e308")};
    desktop.answerToAll = feedOf(FeedEvent{.mag = valueOf(4)}.xml() + "<event/>" + odd.xml());
    CQuakeList list;
    list.KeepBiggestQuakes(10);
    EXPECT_THAT(next(list, 4), ElementsAre(6.1, kNone, 4, 6.1));
    list.KeepBiggestQuakes(2);
    EXPECT_THAT(next(list, 3), ElementsAre(6.1, 4, 6.1));
}

}  // namespace
