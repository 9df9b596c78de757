#include "service/EventQuery.h"

#include "quakes/CQuakeMLParser.h"
#include "tests/standins/StandIns.h"

namespace {

using standins::desktop;

const std::string kService = "https://quakes.example/fdsnws/event/1/query";
const std::string kFeed = "http://magma.geonet.org.nz/services/quake/quakeml/1.0.1/query?";

std::string feedQuery(const std::string& start, const std::string& end) {
    return kFeed + "startDate=" + start + "&endDate=" + end +
           "&magnitudeLower=4&magnitudeUpper=10&outputFormat=quakeml1.0";
}

using EventQueryTest = standins::Test;

TEST_F(EventQueryTest, TheListsQueryIsAskedOfGeoNetsServiceOfToday) {
    desktop.zone = "UTC0";
    desktop.now = 1247650949;  // 2009-07-15T09:42:29Z
    const std::string query = CQuakeMLParser().GetQueryString();
    EXPECT_TRUE(isFeedQuery(query));
    EXPECT_EQ(eventServiceURL(query, kDefaultEventService),
              "https://service.geonet.org.nz/fdsnws/event/1/query?"
              "starttime=2009-07-07T00:00:00&endtime=2009-07-16T00:00:00&minmagnitude=3.999999&"
              "maxmagnitude=10&format=xml&nodata=204");
}

TEST_F(EventQueryTest, DatesAreWholeDaysOfTheMachinesCalendar) {
    const auto times = [](const std::string& start, const std::string& end) {
        const std::string url = eventServiceURL(feedQuery(start, end), kService);
        return url.substr(kService.size(), url.find("&minmagnitude") - kService.size());
    };
    // The clocks change on the first day.
    EXPECT_EQ(times("2009-09-27", "2009-10-04"),
              "?starttime=2009-09-26T12:00:00&endtime=2009-10-04T11:00:00");
    desktop.zone = "<-0330>3:30";
    EXPECT_EQ(times("2009-12-28", "2009-12-31"),
              "?starttime=2009-12-28T03:30:00&endtime=2010-01-01T03:30:00");
}

TEST_F(EventQueryTest, WhatTheServicesAddressNamesItselfIsLeftToIt) {
    const std::string own = "?minmagnitude=5.5&minlatitude=-57&endtime=2020-01-01&starttime=2020-01-01";
    EXPECT_EQ(eventServiceURL(feedQuery("2009-07-07", "2009-07-15"), kService + own + "#x"),
              kService + own + "&maxmagnitude=10&format=xml&nodata=204");
}

TEST_F(EventQueryTest, AShortAddressGetsTheStandardsPath) {
    const std::string host = "http://127.0.0.1:8080", whole = host + "/fdsnws/event/1/query";
    for (const char* path : {"", "/", "/fdsnws/event/1", "/fdsnws/event/1/", "/fdsnws/event/1/query"})
        EXPECT_EQ(eventServiceQueryAddress(host + path), whole) << path;
    EXPECT_EQ(eventServiceQueryAddress(host + "/quakes"), host + "/quakes");
}

TEST_F(EventQueryTest, OtherAddressesAreRefused) {
    for (const char* text : {"quakes", "http:///query", "file:///etc/hostname", "http://a b/"})
        EXPECT_FALSE(isEventServiceAddress(text)) << text;
    EXPECT_EQ(eventServiceURL(kFeed + "startDate=2009-07-07&endDate=2009-07-15", kService), "");
    EXPECT_EQ(eventServiceURL(feedQuery("2009-07-07", "2009-02-30"), kService), "");
    EXPECT_FALSE(isFeedQuery("http://a.example/?u=/services/quake/quakeml/1.0.1/query?"));
}

}  // namespace
