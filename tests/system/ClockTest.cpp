#include "platform/SystemInfo.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <filesystem>

#include "platform/Clock.h"

TEST(SystemInfoTest, TheRunningSystemIsDescribed) {
    EXPECT_EQ(platform::systemNames().system, "Linux");
    EXPECT_EQ(platform::processName(), std::filesystem::read_symlink("/proc/self/exe").filename());
    char node[256] = "";
    gethostname(node, sizeof node);
    EXPECT_EQ(platform::systemNames().node, node);
}

TEST(SystemInfoTest, EveryProcessorHasItsPublishedNumbers) {
    const std::vector<platform::Processor> processors = platform::processors();
    ASSERT_EQ(processors.size(), static_cast<std::size_t>(sysconf(_SC_NPROCESSORS_ONLN)));
    if (platform::systemNames().machine != "x86_64") GTEST_SKIP() << "another machine";
    for (const auto& [type, subtype] : processors)
        EXPECT_EQ(std::pair(type, subtype), std::pair(0x01000007, 3));
}

TEST(ClockTest, ANewTimeZoneCountsAtOnce) {
    const std::time_t newYear = 946684800;  // 2000-01-01T00:00:00Z
    setenv("TZ", "NZST-12NZDT,M9.5.0,M4.1.0/3", 1);
    EXPECT_EQ(platform::localTime(newYear).tm_hour, 13);
    setenv("TZ", "EST5", 1);
    EXPECT_EQ(platform::localTime(newYear).tm_hour, 19);
    unsetenv("TZ");
}
