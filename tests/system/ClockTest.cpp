#include "platform/Clock.h"

#include <gtest/gtest.h>

#include <cstdlib>

TEST(ClockTest, ANewTimeZoneCountsAtOnce) {
    const std::time_t newYear = 946684800;  // 2000-01-01T00:00:00Z
    setenv("TZ", "NZST-12NZDT,M9.5.0,M4.1.0/3", 1);
    EXPECT_EQ(platform::localTime(newYear).tm_hour, 13);
    setenv("TZ", "EST5", 1);
    EXPECT_EQ(platform::localTime(newYear).tm_hour, 19);
    unsetenv("TZ");
}
