#include "quakes/CQuakeEvent.h"

#include <gtest/gtest.h>

#include <limits>
#include <string>

namespace {

TEST(CQuakeEventTest, TheZoneReplacesFractionAndZoneLetterOnceAndWithinTheField) {
    const struct {
        std::string given, kept;
    } cases[] = {
        {"2009-07-15T09:22:29.04Z", "2009-07-15T09:22:29 +0000"},
        {"1.2.3", "1.2 +0000"},
        {".5", " +0000"},
        {"2009-07-15T09:22:29Z", "2009-07-15T09:22:29Z"},
        {"", ""},
        {std::string(249, 'x') + ".1234Z", std::string(249, 'x') + " +0000"},
        {std::string(250, 'x') + ".123Z", std::string(250, 'x') + " +000"},
        {std::string(254, 'x') + ".", std::string(254, 'x') + " "},
        {std::string(300, 'x'), std::string(255, 'x')},
    };
    for (const auto& each : cases)
        EXPECT_EQ(CQuakeEvent(each.given.c_str(), 0, 0, 0, 0).mTime, each.kept) << each.given;
    CQuakeEvent event("2009.1", 1, 2, 3, 4);
    event.mTime[1] = '.';
    EXPECT_STREQ(CQuakeEvent(event).mTime, "2.09 +0000");  // a copy takes the time as it stands
}

TEST(CQuakeEventTest, IsLessByMagnitudeAlone) {
    const CQuakeEvent small("b", 4, 9, 9, 9), big("a", 5, 0, 0, 0);
    const CQuakeEvent none("", std::numeric_limits<double>::quiet_NaN(), 0, 0, 0);
    EXPECT_TRUE(small < big);
    EXPECT_FALSE(big < small);
    EXPECT_FALSE(small < CQuakeEvent(small));
    EXPECT_FALSE(none < big);
    EXPECT_FALSE(big < none);
}

}  // namespace
