#include <gtest/gtest.h>

#include "platform/WebView.h"
#include "quakes/CQuakeEvent.h"
#include "tests/map/MapPage.h"

TEST(EntranceTest, RingsSpreadOnceEachTimeThatThePageComesToTheScreen) {
    MapPage page({1280, 720});
    ASSERT_TRUE(page.show(CQuakeEvent("2016-11-13T11:02:56.346Z", 7.8, -42.69, 173.02, 15)));
    for (int time = 0; time < 2; ++time) {
        page.view().fadeEnded(true);
        ASSERT_TRUE(page.waitFor("document.querySelector('canvas.entrance') !== null"));
        page.view().fadeEnded(true);  // it stays while another view fades
        bool hasMoved = false;
        while (page.evaluate("document.querySelectorAll('canvas.entrance').length") == "1")
            hasMoved = hasMoved || !(page.pictureNow() == page.picture());
        EXPECT_TRUE(hasMoved);
        page.evaluate("await new Promise(done => requestAnimationFrame(() => requestAnimationFrame(done)))");
        EXPECT_TRUE(page.picture() == page.pictureNow()) << "something of the rings is left";
        page.view().fadeEnded(false);
    }
}
