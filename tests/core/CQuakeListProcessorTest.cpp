#include "quakes/CQuakeListProcessor.h"

#include <gmock/gmock.h>

#include <deque>
#include <limits>

#include "quakes/CQuakeEvent.h"

namespace {

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double kNull = -1e9;  // stands for a null entry

// The positions of the entries with these magnitudes that a selection of count keeps.
std::vector<std::size_t> kept(int count, const std::vector<double>& magnitudes) {
    std::deque<CQuakeEvent> events;
    std::vector<CQuakeEvent*> list;
    for (std::size_t i = 0; i < magnitudes.size(); ++i) {
        events.emplace_back("", magnitudes[i], static_cast<double>(i), 0.0, 0.0);
        list.push_back(magnitudes[i] == kNull ? nullptr : &events.back());
    }
    CQuakeListProcessor::KeepBiggestQuakes(count, list);
    std::vector<std::size_t> positions;
    for (const CQuakeEvent* each : list)
        positions.push_back(each ? static_cast<std::size_t>(each->mLatitude) : magnitudes.size());
    return positions;
}

TEST(CQuakeListProcessorTest, ComparesTheBiggerFirstAndNullLast) {
    const CQuakeEvent five("", 5, 0, 0, 0), four("", 4, 0, 0, 0);
    EXPECT_TRUE(compare(&five, &four) && compare(&four, nullptr));
    EXPECT_FALSE(compare(&four, &five) || compare(&four, &four) || compare(nullptr, &four) ||
                 compare(nullptr, nullptr));
}

TEST(CQuakeListProcessorTest, KeepsTheBiggestInTheirOldOrderAndDropsNullEntriesThenNoNumbersFirst) {
    using Positions = std::vector<std::size_t>;
    const std::vector<double> twelve{5.1, 4.0, 6.2, 5.0, 7.8, 4.1, 5.9, 6.0, 4.2, 4.3, 6.6, 4.9};
    EXPECT_EQ(kept(10, twelve), (Positions{0, 2, 3, 4, 6, 7, 8, 9, 10, 11}));
    EXPECT_EQ(kept(1, twelve), (Positions{4}));
    for (const int count : {3, 10}) EXPECT_EQ(kept(count, {4, 6, 5}), (Positions{0, 1, 2}));
    for (const int count : {0, -3}) EXPECT_EQ(kept(count, {4, 5}), Positions{});
    EXPECT_EQ(kept(10, {}), Positions{});
    EXPECT_EQ(kept(2, {kNull, 4, kNull, 6, kNull}), (Positions{1, 3}));
    EXPECT_EQ(kept(2, {kNaN, 4, kNaN, 6, kNaN}), (Positions{1, 3}));
    EXPECT_EQ(kept(2, {kNull, kNaN, -1}), (Positions{1, 2}));
    EXPECT_EQ(kept(3, {kNull, 4, kNull, 6, kNull}).size(), 3u);
    EXPECT_EQ(kept(10, std::vector<double>(100'000, kNaN)).size(), 10u);
}

TEST(CQuakeListProcessorTest, CountsEqualsAndAPointerThatOccursTwiceAsTwo) {
    CQuakeEvent small("", 4, 0, 0, 0), big("", 6, 0, 0, 0);
    std::vector<CQuakeEvent*> list{&big, &small, &big, &small};
    CQuakeListProcessor::KeepBiggestQuakes(3, list);
    EXPECT_THAT(list, testing::UnorderedElementsAre(&big, &big, &small));
    CQuakeListProcessor::KeepBiggestQuakes(1, list);
    EXPECT_THAT(list, testing::ElementsAre(&big));
}

TEST(CQuakeListProcessorTest, SelectsFromALongListWithoutMagnitudesInBetween) {
    std::vector<double> magnitudes;
    for (int i = 0; i < 100'000; ++i) magnitudes.push_back(i % 3 == 0 ? kNaN : i);
    EXPECT_THAT(kept(4, magnitudes), testing::ElementsAre(99'994, 99'995, 99'997, 99'998));
}

}  // namespace
