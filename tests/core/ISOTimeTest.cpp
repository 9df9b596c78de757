#include "support/ISOTime.h"

#include <gtest/gtest.h>

using namespace std::chrono;

TEST(ISOTimeTest, EveryPrecisionIsReadToMillisecondsAndEveryZoneAsUTC) {
    for (const auto& [text, time, fraction] :
         {std::tuple{"2011-02-21T23:51:42.34Z", "2011-02-21T23:51:42", 340},
          {"2011-02-21T23:51:42.9999999Z", "2011-02-21T23:51:42", 999},
          {"2011-02-21T23:51:42.5", "2011-02-21T23:51:42", 500},
          {"2016-11-14T00:02:56+13:00", "2016-11-13T11:02:56", 0},
          {"2015-12-31T23:30:00.25-03:30", "2016-01-01T03:00:00", 250},
          {"2016-03-01T01:00:00+0200", "2016-02-29T23:00:00", 0},
          {"2016-12-31T23:59:60Z", "2017-01-01T00:00:00", 0}}) {
        const auto read = readISOTime(text);
        ASSERT_TRUE(read) << text;
        EXPECT_EQ(isoTime(floor<seconds>(*read)), time);
        EXPECT_EQ((*read - floor<seconds>(*read)).count(), fraction) << text;
    }
}

TEST(ISOTimeTest, AnyOtherTextIsRefused) {
    for (const char* text : {"", "2016-11-13", "2016-02-30T00:00:00Z", "2016-11-13T24:00:00Z",
                             "2016-11-13T11:02:56 Z", "2016-11-13T11:02:56+15:00", "2016-11-13T11:02Z"})
        EXPECT_FALSE(readISOTime(text)) << text;
}
