#include "service/EventQuery.h"

#include <gtest/gtest.h>

#include "quakes/CQuakeMLParser.h"
#include "tests/standins/Clock.h"
#include "tests/standins/StandIns.h"

namespace {

constexpr char kService[] = "https://quakes.example/fdsnws/event/1/query";
constexpr char kFeed[] = "http://magma.geonet.org.nz/services/quake/quakeml/1.0.1/query?";

std::string feedQuery(const std::string& start, const std::string& end) {
    return kFeed + ("startDate=" + start) + "&endDate=" + end +
           "&magnitudeLower=4&magnitudeUpper=10&outputFormat=quakeml1.0";
}

class EventQueryTest : public standins::Test {
  protected:
    EventQueryTest() { standins::clock().zone = "UTC0"; }

    static std::string asked(const std::string& start, const std::string& end) {
        const std::string url = eventServiceURL(feedQuery(start, end), kService);
        const std::size_t from = url.find("starttime");
        return from == url.npos ? url : url.substr(from, url.find("&minmagnitude") - from);
    }
};

TEST_F(EventQueryTest, TheListsQueryIsAskedOfGeoNetsServiceOfToday) {
    standins::clock().now = 1247650949;  // 2009-07-15T09:42:29Z
    const std::string query = CQuakeMLParser().GetQueryString();
    EXPECT_TRUE(isFeedQuery(query));
    EXPECT_EQ(eventServiceURL(query, kDefaultEventService),
              "https://service.geonet.org.nz/fdsnws/event/1/query?"
              "starttime=2009-07-07T00:00:00&endtime=2009-07-16T00:00:00&minmagnitude=3.999999&"
              "maxmagnitude=10&eventtype=earthquake&format=xml&nodata=204");
}

TEST_F(EventQueryTest, DatesAreWholeDaysOfTheMachinesCalendar) {
    EXPECT_EQ(asked("2009-12-28", "2009-12-31"), "starttime=2009-12-28T00:00:00&endtime=2010-01-01T00:00:00");
    standins::clock().zone = "NZST-12NZDT,M9.5.0,M4.1.0/3";
    EXPECT_EQ(asked("2009-09-26", "2009-10-04"),  // the clocks changed in between
              "starttime=2009-09-25T12:00:00&endtime=2009-10-04T11:00:00");
    standins::clock().zone = "<-0330>3:30";
    EXPECT_EQ(asked("2008-02-20", "2008-02-28"), "starttime=2008-02-20T03:30:00&endtime=2008-02-29T03:30:00");
}

TEST_F(EventQueryTest, WhatTheServicesAddressNamesItselfIsLeftToIt) {
    const std::string address =
        std::string(kService) + "?minmagnitude=5.5&minlatitude=-57&starttime=2020-01-01#x";
    EXPECT_EQ(eventServiceURL(feedQuery("2009-07-07", "2009-07-15"), address),
              std::string(kService) +
                  "?minmagnitude=5.5&minlatitude=-57&starttime=2020-01-01&"
                  "endtime=2009-07-16T00:00:00&maxmagnitude=10&eventtype=earthquake&"
                  "format=xml&nodata=204");
}

TEST_F(EventQueryTest, AShortAddressGetsTheStandardsPath) {
    const std::string whole = "http://127.0.0.1:8080/fdsnws/event/1/query";
    for (const std::string address :
         {"http://127.0.0.1:8080", "http://127.0.0.1:8080/", "http://127.0.0.1:8080/fdsnws/event/1",
          "http://127.0.0.1:8080/fdsnws/event/1/", "http://127.0.0.1:8080/fdsnws/event/1/query"})
        EXPECT_EQ(eventServiceQueryAddress(address), whole) << address;
    EXPECT_EQ(eventServiceQueryAddress("http://a.example?b=c"), "http://a.example/fdsnws/event/1/query?b=c");
    EXPECT_EQ(eventServiceQueryAddress("http://a.example/quakes"), "http://a.example/quakes");
}

TEST_F(EventQueryTest, OnlyWebAddressesNameAService) {
    EXPECT_TRUE(isEventServiceAddress(kDefaultEventService));
    EXPECT_TRUE(isEventServiceAddress("http://127.0.0.1:8080"));
    for (const char* text : {"", "quakes", "https://", "http:///query", "http://?a=b", "ftp://a.example/",
                             "file:///etc/hostname", "http://a b/", "https://a.example/\n"})
        EXPECT_FALSE(isEventServiceAddress(text)) << text;
}

TEST_F(EventQueryTest, AQueryWithoutDatesOrMagnitudesIsNone) {
    EXPECT_EQ(asked("2009-07-07", "2009-02-30"), "");
    EXPECT_EQ(asked("", "2009-07-15"), "");
    EXPECT_EQ(asked("09-07-07", "2009-07-15"), "");
    EXPECT_EQ(eventServiceURL(kFeed, kService), "");
    EXPECT_EQ(eventServiceURL(std::string(kFeed) + "startDate=2009-07-07&endDate=2009-07-15", kService), "");
    EXPECT_FALSE(isFeedQuery("http://magma.geonet.org.nz/services/quake/"));
    EXPECT_FALSE(isFeedQuery("http://a.example/?u=/services/quake/quakeml/1.0.1/query?"));
    EXPECT_FALSE(isFeedQuery("/services/quake/quakeml/1.0.1/query?"));
    EXPECT_FALSE(isFeedQuery(""));
}

}  // namespace
