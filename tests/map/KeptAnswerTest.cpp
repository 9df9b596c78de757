#include <gtest/gtest.h>

#include <ctime>
#include <string>

#include "platform/Bundle.h"
#include "quakes/CQuakeEvent.h"
#include "tests/map/MapPage.h"

namespace {

std::string inWords(std::time_t time) {
    const std::tm local = *std::localtime(&time);
    char text[64];
    std::strftime(text, sizeof text, ". %B %Y, %H:%M", &local);
    return "\"Earthquakes as of " + std::to_string(local.tm_mday) + text + '"';
}

TEST(KeptAnswerTest, ThePageSaysWhenItsEarthquakesAreFrom) {
    const std::time_t yesterday = std::time(nullptr) - 24 * 60 * 60;
    platform::setGeneratedResource("as-of.js", [=] {
        return "window.TELLMAR_AS_OF = new Date(" + std::to_string(yesterday) + "000).toISOString();";
    });
    for (const platform::Size& screen : {platform::Size{200, 150}, {1280, 720}}) {
        SCOPED_TRACE(screen.width);
        MapPage page(screen);
        ASSERT_TRUE(page.show({"2016-11-13T11:02:56.346Z", 7.8, -42.69, 173.02, 15}));
        EXPECT_EQ(page.evaluate("document.getElementById('as-of').innerText"), inWords(yesterday));
        EXPECT_EQ(page.evaluate("(await import('bundle:///map/geometry.js'))"
                                ".boxesMeet(tellmarLayout.boxes.credit, tellmarLayout.boxes.panel)"),
                  "false");
    }
}

}  // namespace
