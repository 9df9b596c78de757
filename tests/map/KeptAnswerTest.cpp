#include <gtest/gtest.h>

#include <cstdlib>
#include <ctime>
#include <string>

#include "platform/Bundle.h"
#include "platform/URLLoading.h"
#include "quakes/CQuakeEvent.h"
#include "quakes/CQuakeList.h"
#include "service/AnswerCache.h"
#include "service/EventFeed.h"
#include "tests/TemporaryFolder.h"
#include "tests/map/MapPage.h"

namespace {

constexpr char kService[] = "http://127.0.0.1:9/";  // where nobody answers
constexpr char kAnswer[] =
    R"(<quakeml xmlns="http://quakeml.org/xmlns/quakeml/1.0"><eventParameters><event><type>earthquake</type>
    <origin><time><value>2016-11-13T11:02:56.346Z</value></time><latitude><value>-42.69</value></latitude>
    <longitude><value>173.02</value></longitude><depth><value>15</value></depth></origin>
    <magnitude><mag><value>7.8</value></mag><type>M</type></magnitude></event></eventParameters></quakeml>)";

std::string inWords(std::time_t time) {
    const std::tm utc = *std::gmtime(&time);
    char text[64];
    std::strftime(text, sizeof text, ". %B %Y, %H:%M", &utc);
    return "\"Earthquakes as of " + std::to_string(utc.tm_mday) + text + '"';
}

TEST(KeptAnswerTest, ThePageTellsOfWhenItsEarthquakesAre) {
    const TemporaryFolder folder;
    setenv("XDG_CACHE_HOME", folder.path().c_str(), 1);
    const std::time_t yesterday = std::time(nullptr) - 24 * 60 * 60;
    const AnswerCache cache(AnswerCache::userFolder());
    ASSERT_TRUE(cache.store({kService, "an earlier question", yesterday, {}, kAnswer}));
    EventFeed feed({.service = kService});
    platform::setURLResponder(
        [&feed](const std::string& url, std::string& data) { return feed.answer(url, data); });
    platform::setGeneratedResource("as-of.js", [&feed] { return feed.asOfScript(); });

    CQuakeList list;
    const CQuakeEvent* const quake = list.GetNextQuake();
    ASSERT_TRUE(quake);
    for (const platform::Size& screen : {platform::Size{200, 150}, {1280, 720}}) {
        SCOPED_TRACE(screen.width);
        MapPage page(screen);
        ASSERT_TRUE(page.show(*quake));
        EXPECT_EQ(page.evaluate("document.getElementById('as-of').innerText"), inWords(yesterday));
        EXPECT_EQ(page.evaluate("boxesMeet(tellmarLayout.boxes.credit, tellmarLayout.boxes.panel)"), "false");
    }
}

}  // namespace
