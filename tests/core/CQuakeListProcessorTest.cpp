#include "quakes/CQuakeListProcessor.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <deque>
#include <limits>

#include "quakes/CQuakeEvent.h"

namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

class CQuakeListProcessorTest : public ::testing::Test {
  protected:
    CQuakeEvent* quake(double magnitude) { return &mEvents.emplace_back("", magnitude, 0.0, 0.0, 0.0); }

    std::vector<CQuakeEvent*> quakes(const std::vector<double>& magnitudes) {
        std::vector<CQuakeEvent*> list;
        for (const double magnitude : magnitudes) list.push_back(quake(magnitude));
        return list;
    }

    static std::vector<double> biggest(int count, std::vector<CQuakeEvent*> list) {
        CQuakeListProcessor::KeepBiggestQuakes(count, list);
        std::vector<double> magnitudes;
        for (const CQuakeEvent* each : list) magnitudes.push_back(each->mMagnitude);
        return magnitudes;
    }

  private:
    std::deque<CQuakeEvent> mEvents;
};

TEST_F(CQuakeListProcessorTest, ComparesTheBiggerFirstAndNullLast) {
    EXPECT_TRUE(compare(quake(5), quake(4)));
    EXPECT_FALSE(compare(quake(4), quake(5)));
    EXPECT_FALSE(compare(quake(4), quake(4)));
    EXPECT_FALSE(compare(quake(kNaN), quake(4)));
    EXPECT_FALSE(compare(quake(4), quake(kNaN)));
    EXPECT_TRUE(compare(quake(kNaN), nullptr));
    EXPECT_FALSE(compare(nullptr, quake(4)));
    EXPECT_FALSE(compare(nullptr, nullptr));
}

TEST_F(CQuakeListProcessorTest, KeepsTheBiggestInTheirOldOrder) {
    const auto twelve = quakes({5.1, 4.0, 6.2, 5.0, 7.8, 4.1, 5.9, 6.0, 4.2, 4.3, 6.6, 4.9});
    EXPECT_THAT(biggest(10, twelve), ElementsAre(5.1, 6.2, 5.0, 7.8, 5.9, 6.0, 4.2, 4.3, 6.6, 4.9));
    EXPECT_THAT(biggest(1, twelve), ElementsAre(7.8));
}

TEST_F(CQuakeListProcessorTest, KeepsEverythingWhenThereIsRoom) {
    const auto three = quakes({4, 6, 5});
    EXPECT_THAT(biggest(3, three), ElementsAre(4, 6, 5));
    EXPECT_THAT(biggest(10, three), ElementsAre(4, 6, 5));
    EXPECT_THAT(biggest(10, {}), IsEmpty());
}

TEST_F(CQuakeListProcessorTest, KeepsNothingForACountOfZeroOrLess) {
    EXPECT_THAT(biggest(0, quakes({4, 5})), IsEmpty());
    EXPECT_THAT(biggest(-3, quakes({4, 5})), IsEmpty());
}

TEST_F(CQuakeListProcessorTest, KeepsExactlyOneOfTwoEqualsAtTheCut) {
    auto list = quakes({4, 6, 5, 5});
    const auto all = list;
    CQuakeListProcessor::KeepBiggestQuakes(2, list);
    ASSERT_THAT(list, SizeIs(2));
    EXPECT_EQ(list[0], all[1]);
    EXPECT_TRUE(list[1] == all[2] || list[1] == all[3]);
}

TEST_F(CQuakeListProcessorTest, DropsNullEntriesFirst) {
    CQuakeEvent* const small = quake(4);
    CQuakeEvent* const big = quake(6);
    std::vector<CQuakeEvent*> list{nullptr, small, nullptr, big, nullptr};
    CQuakeListProcessor::KeepBiggestQuakes(3, list);
    EXPECT_THAT(list, SizeIs(3));
    std::erase(list, nullptr);
    EXPECT_THAT(list, ElementsAre(small, big));

    CQuakeListProcessor::KeepBiggestQuakes(1, list);
    EXPECT_THAT(list, ElementsAre(big));
}

TEST_F(CQuakeListProcessorTest, DropsMagnitudesThatAreNoNumberBeforeRealOnes) {
    EXPECT_THAT(biggest(2, quakes({kNaN, 4, kNaN, 6, kNaN})), ElementsAre(4, 6));

    std::vector<CQuakeEvent*> list{nullptr, quake(kNaN), quake(-1)};
    const auto kept = std::vector<CQuakeEvent*>{list[1], list[2]};
    CQuakeListProcessor::KeepBiggestQuakes(2, list);
    EXPECT_EQ(list, kept);
}

TEST_F(CQuakeListProcessorTest, SelectsFromALongListWithoutMagnitudesInBetween) {
    std::vector<double> magnitudes;
    for (int i = 0; i < 100'000; ++i) magnitudes.push_back(i % 3 == 0 ? kNaN : (i * 7919) % 100'003);
    const auto kept = biggest(10, quakes(magnitudes));
    ASSERT_THAT(kept, SizeIs(10));
    std::erase_if(magnitudes, [](double each) { return each != each; });
    std::sort(magnitudes.rbegin(), magnitudes.rend());
    magnitudes.resize(10);
    EXPECT_THAT(kept, ::testing::UnorderedElementsAreArray(magnitudes));
}

TEST_F(CQuakeListProcessorTest, CountsAPointerThatOccursTwiceTwice) {
    CQuakeEvent* const big = quake(6);
    std::vector<CQuakeEvent*> list{big, quake(4), big, quake(5)};
    CQuakeListProcessor::KeepBiggestQuakes(1, list);
    EXPECT_THAT(list, ElementsAre(big));
}

}  // namespace
