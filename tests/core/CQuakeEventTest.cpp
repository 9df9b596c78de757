#include "quakes/CQuakeEvent.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <string>

namespace {

std::string timeOf(const std::string& text) { return CQuakeEvent(text.c_str(), 0, 0, 0, 0).mTime; }

TEST(CQuakeEventTest, ReplacesFractionAndZoneLetterByTheZone) {
    EXPECT_EQ(timeOf("2009-07-15T09:22:29.04Z"), "2009-07-15T09:22:29 +0000");
    EXPECT_EQ(timeOf("12:00:00."), "12:00:00 +0000");
    EXPECT_EQ(timeOf("1.2.3"), "1.2 +0000");
    EXPECT_EQ(timeOf(".5"), " +0000");
}

TEST(CQuakeEventTest, KeepsATimeWithoutAFullStop) {
    EXPECT_EQ(timeOf("2009-07-15T09:22:29Z"), "2009-07-15T09:22:29Z");
    EXPECT_EQ(timeOf(""), "");
}

TEST(CQuakeEventTest, KeepsTheZoneWithinTheField) {
    EXPECT_EQ(timeOf(std::string(249, 'x') + ".1234Z"), std::string(249, 'x') + " +0000");
    EXPECT_EQ(timeOf(std::string(250, 'x') + ".123Z"), std::string(250, 'x') + " +000");
    EXPECT_EQ(timeOf(std::string(254, 'x') + "."), std::string(254, 'x') + " ");
}

TEST(CQuakeEventTest, CutsATimeThatDoesNotFit) {
    EXPECT_EQ(timeOf(std::string(255, 'x')), std::string(255, 'x'));
    EXPECT_EQ(timeOf(std::string(300, 'x')), std::string(255, 'x'));
}

TEST(CQuakeEventTest, TakesTheNumbersInTheOrderOfItsFields) {
    const CQuakeEvent event("", 6.1, -43.5, 172.7, 4.8);
    EXPECT_EQ(event.mMagnitude, 6.1);
    EXPECT_EQ(event.mLatitude, -43.5);
    EXPECT_EQ(event.mLongitude, 172.7);
    EXPECT_EQ(event.mDepth, 4.8);
}

TEST(CQuakeEventTest, CopiesTheTimeAsItStands) {
    CQuakeEvent event("2009.1", 1, 2, 3, 4);
    event.mTime[1] = '.';
    const CQuakeEvent copy(event);
    EXPECT_STREQ(copy.mTime, "2.09 +0000");
    EXPECT_EQ(copy.mDepth, 4);

    CQuakeEvent assigned("", 0, 0, 0, 0);
    const CQuakeEvent& itself = assigned = event;
    EXPECT_EQ(&itself, &assigned);
    EXPECT_STREQ(assigned.mTime, "2.09 +0000");
    EXPECT_EQ(assigned.mMagnitude, 1);
}

TEST(CQuakeEventTest, IsLessByMagnitudeAlone) {
    const CQuakeEvent small("b", 4, 9, 9, 9);
    const CQuakeEvent big("a", 5, 0, 0, 0);
    const CQuakeEvent none("", std::numeric_limits<double>::quiet_NaN(), 0, 0, 0);
    EXPECT_TRUE(small < big);
    EXPECT_FALSE(big < small);
    EXPECT_FALSE(small < CQuakeEvent(small));
    EXPECT_FALSE(none < big);
    EXPECT_FALSE(big < none);
}

}  // namespace
