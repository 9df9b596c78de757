#include <gtest/gtest.h>
#include <gtk/gtk.h>

#include "platform/WebView.h"
#include "quakes/CQuakeEvent.h"
#include "tests/map/MapPage.h"

namespace {

class EntranceTest : public testing::Test {
  protected:
    void show(bool isAnimated) {
        g_object_set(gtk_settings_get_default(), "gtk-enable-animations", isAnimated, nullptr);
        ASSERT_TRUE(mPage.show(CQuakeEvent("2016-11-13T11:02:56.346Z", 7.8, -42.69, 173.02, 15)));
    }

    MapPage mPage{{1280, 720}};
};

TEST_F(EntranceTest, RingsSpreadOnceEachTimeThatThePageComesToTheScreen) {
    show(true);
    mPage.evaluate("(window.times = 0, addEventListener('viewshown', () => { ++times; }))");
    for (const char* times : {"times === 1", "times === 2"}) {
        mPage.view().fadeEnded(true);
        ASSERT_TRUE(mPage.waitFor("document.querySelectorAll('canvas.entrance').length === 1"));
        mPage.view().fadeEnded(true);  // it stays while another view fades
        bool hasMoved = false;
        while (mPage.evaluate("document.querySelectorAll('canvas.entrance').length") == "1")
            hasMoved = hasMoved || !(mPage.pictureNow() == mPage.picture());
        EXPECT_TRUE(hasMoved);
        EXPECT_EQ(mPage.evaluate(times), "true");
        mPage.evaluate("await new Promise(done => requestAnimationFrame(() => requestAnimationFrame(done)))");
        EXPECT_TRUE(mPage.picture() == mPage.pictureNow()) << "something of the rings is left";
        mPage.view().fadeEnded(false);
    }
}

TEST_F(EntranceTest, RingsStayAwayWhereTheDesktopWantsNoMotion) {
    show(false);
    ASSERT_TRUE(mPage.waitFor("matchMedia('(prefers-reduced-motion: reduce)').matches"));
    mPage.evaluate("window.setTimeout = () => { window.isMoving = true; }");
    mPage.view().fadeEnded(true);
    EXPECT_EQ(mPage.evaluate("typeof isMoving"), "\"undefined\"");
}

}  // namespace
