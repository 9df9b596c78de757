#include "saver/TellmarScreenSaverView.h"

#include <gmock/gmock.h>

#include "mappages/SingleQuakeView.h"
#include "platform/Bundle.h"
#include "platform/NotificationCenter.h"
#include "saver/InitialView.h"
#include "tests/standins/Alert.h"
#include "tests/standins/Bundle.h"
#include "tests/standins/Canvas.h"
#include "tests/standins/ConfigPanel.h"
#include "tests/standins/QuakeFeed.h"
#include "tests/standins/ScreenSaverDefaults.h"
#include "tests/standins/StandIns.h"
#include "tests/standins/URLLoading.h"
#include "tests/standins/ViewAnimation.h"
#include "tests/standins/WebView.h"

namespace {

using platform::Rect;
using standins::Drawing;
using standins::fades;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::IsNull;
using testing::NotNull;
using testing::SizeIs;
using Mode = TellmarScreenSaverView::Mode;

constexpr Rect kFrame{40, 50, 800, 600};
constexpr Rect kBounds{0, 0, 800, 600};
constexpr char kModule[] = "org.tellmar.TellmarScreenSaver";
constexpr char kKey[] = "DisplayQuakeForNSeconds";

class TellmarScreenSaverViewTest : public standins::Test {
  protected:
    TellmarScreenSaverViewTest() { standins::serveQuakes({4, 5, 6, 7}); }

    void start(bool isPreview = false) { ASSERT_EQ(mView.initWithFrame(kFrame, isPreview), &mView); }

    void finishALoad() { platform::NotificationCenter::post(platform::WebViewProgressFinishedNotification); }

    void tick(int times = 1) {
        mView.setCanvas(mCanvas.get());
        for (int i = 0; i < times; ++i) mView.animateOneFrame();
    }

    // Starts the saver and brings it to the end of the splash's fade.
    void startCycling() {
        start();
        finishALoad();
        tick(2);
        ASSERT_EQ(mView.mode(), Mode::Cycling);
    }

    platform::View* quakeViewA() { return mView.subviews().at(0).get(); }
    platform::View* quakeViewB() { return mView.subviews().at(1).get(); }
    platform::View* splash() { return mView.subviews().at(2).get(); }

    // The stored time that the display ought to follow.
    static int& stored() { return standins::storedDefaults()[kModule][kKey]; }

    static std::vector<platform::WebView::Backing::Load>& loadsOf(platform::View* quakeView) {
        return dynamic_cast<platform::WebView&>(*quakeView->subviews().at(0)).backing().loads;
    }

    // The views that are in sight, from the lowest to the uppermost.
    std::vector<platform::View*> visible() {
        std::vector<platform::View*> views;
        for (const auto& each : mView.subviews())
            if (!each->isHidden()) views.push_back(each.get());
        return views;
    }

    void expectFade(std::size_t number, platform::View* in, platform::View* out, double duration) {
        ASSERT_GT(fades().started.size(), number);
        const standins::StartedFade& fade = fades().started[number];
        ASSERT_THAT(fade.descriptions, SizeIs(2));
        EXPECT_EQ(fade.descriptions[0].target, in);
        EXPECT_EQ(fade.descriptions[0].effect, platform::NSViewAnimationFadeInEffect);
        EXPECT_EQ(fade.descriptions[1].target, out);
        EXPECT_EQ(fade.descriptions[1].effect, platform::NSViewAnimationFadeOutEffect);
        for (const auto& each : fade.descriptions) EXPECT_EQ(each.endFrame, kBounds);
        EXPECT_EQ(fade.blockingMode, platform::NSAnimationBlocking);
        EXPECT_EQ(fade.duration, duration);
    }

    std::unique_ptr<platform::Canvas> mCanvas = standins::makeCanvas();
    TellmarScreenSaverView mView;
};

TEST_F(TellmarScreenSaverViewTest, StacksTheSplashOverTwoHiddenQuakeViewsThatLoad) {
    start();
    ASSERT_THAT(mView.subviews(), SizeIs(3));
    EXPECT_THAT(dynamic_cast<SingleQuakeView*>(quakeViewA()), NotNull());
    EXPECT_THAT(dynamic_cast<SingleQuakeView*>(quakeViewB()), NotNull());
    EXPECT_THAT(dynamic_cast<InitialView*>(splash()), NotNull());
    for (const auto& each : mView.subviews()) EXPECT_EQ(each->frame(), kBounds);
    EXPECT_THAT(visible(), ElementsAre(splash()));
    EXPECT_EQ(mView.mode(), Mode::Splash);

    EXPECT_THAT(standins::urlLoading().asked, SizeIs(1));
    ASSERT_THAT(loadsOf(quakeViewA()), SizeIs(1));
    ASSERT_THAT(loadsOf(quakeViewB()), SizeIs(1));
    EXPECT_THAT(loadsOf(quakeViewA())[0].page, HasSubstr("(3.000, 172.713, 7.00"));
    EXPECT_THAT(loadsOf(quakeViewB())[0].page, HasSubstr("(2.000, 172.713, 6.00"));
}

TEST_F(TellmarScreenSaverViewTest, BuildsNothingWithoutARectangle) {
    EXPECT_THAT(mView.initWithFrame({0, 0, 800, -1}, false), IsNull());
    EXPECT_THAT(mView.subviews(), IsEmpty());
    EXPECT_THAT(standins::urlLoading().asked, IsEmpty());
}

TEST_F(TellmarScreenSaverViewTest, HoldsTheSplashUntilTheSecondTickThatFindsAPage) {
    start();
    tick(4);
    EXPECT_EQ(mView.mode(), Mode::Splash);
    finishALoad();
    tick();
    EXPECT_EQ(mView.mode(), Mode::PageSeen);
    EXPECT_THAT(visible(), ElementsAre(splash()));
    EXPECT_THAT(fades().started, IsEmpty());
    tick();
    EXPECT_EQ(mView.mode(), Mode::Cycling);
    EXPECT_THAT(visible(), ElementsAre(quakeViewB()));
    EXPECT_THAT(fades().started, SizeIs(1));
    expectFade(0, quakeViewB(), splash(), 1.0);
    EXPECT_THAT(loadsOf(quakeViewA()), SizeIs(1));
    EXPECT_THAT(loadsOf(quakeViewB()), SizeIs(1));
}

TEST_F(TellmarScreenSaverViewTest, CountsOnlyTheTicksThatFindBComplete) {
    start();
    finishALoad();
    tick();
    static_cast<SingleQuakeView*>(quakeViewB())->loadNextPage();
    tick(3);
    EXPECT_EQ(mView.mode(), Mode::PageSeen);

    finishALoad();
    static_cast<SingleQuakeView*>(quakeViewA())->loadNextPage();
    tick();
    EXPECT_EQ(mView.mode(), Mode::Cycling);
}

TEST_F(TellmarScreenSaverViewTest, SwapsAtEveryTickAndLoadsIntoTheViewThatWentOutOfSight) {
    startCycling();
    tick();
    EXPECT_THAT(visible(), ElementsAre(quakeViewA()));
    tick();
    EXPECT_THAT(visible(), ElementsAre(quakeViewB()));
    tick();
    EXPECT_THAT(visible(), ElementsAre(quakeViewA()));
    EXPECT_THAT(fades().started, SizeIs(4));
    expectFade(1, quakeViewA(), quakeViewB(), platform::ViewAnimation::kDefaultDuration);
    expectFade(2, quakeViewB(), quakeViewA(), platform::ViewAnimation::kDefaultDuration);
    expectFade(3, quakeViewA(), quakeViewB(), platform::ViewAnimation::kDefaultDuration);

    const auto &ofA = loadsOf(quakeViewA()), &ofB = loadsOf(quakeViewB());
    ASSERT_THAT(ofA, SizeIs(2));
    ASSERT_THAT(ofB, SizeIs(3));
    EXPECT_THAT(ofB[1].page, HasSubstr("(1.000, "));
    EXPECT_THAT(ofA[1].page, HasSubstr("(0.000, "));
    EXPECT_THAT(ofB[2].page, HasSubstr("(3.000, "));
    EXPECT_TRUE(ofB[1].superviewWasHidden);
    EXPECT_TRUE(ofA[1].superviewWasHidden);
}

TEST_F(TellmarScreenSaverViewTest, EndsTheLastFadeBeforeTheNextAndGoesOnAfterAStop) {
    startCycling();
    mView.startAnimation();
    EXPECT_TRUE(mView.isAnimating());
    mView.stopAnimation();
    EXPECT_FALSE(mView.isAnimating());
    EXPECT_EQ(fades().stopped, 0);
    EXPECT_EQ(fades().alive, 1);
    tick();
    EXPECT_THAT(visible(), ElementsAre(quakeViewA()));
    EXPECT_EQ(fades().stopped, 1);
    EXPECT_EQ(fades().alive, 1);
}

TEST_F(TellmarScreenSaverViewTest, PaintsThePreviewAndNothingElse) {
    start(true);
    EXPECT_THAT(loadsOf(quakeViewB()), SizeIs(1));
    finishALoad();
    tick();
    const Drawing image{.what = platform::pathForResource("google_maps_nz_pre.png"), .place = kBounds};
    const Drawing text{
        .what =
            "We acknowledge the New Zealand GeoNet project and its sponsors EQC, GNS Science and LINZ, "
            "for providing data/images used in this study.",
        .place = {7.5, 2, 785, 596},
        .attributes = {"Arial", 9, {0, 0, 0, 0.75}, -1.5}};
    EXPECT_THAT(mCanvas->backing().drawings, ElementsAre(image, text));

    standins::bundle().resources.erase("google_maps_nz_pre.png");
    tick(2);
    EXPECT_THAT(mCanvas->backing().drawings, ElementsAre(image, text, text, text));
    EXPECT_EQ(mView.mode(), Mode::Splash);
    EXPECT_THAT(fades().started, IsEmpty());
}

TEST_F(TellmarScreenSaverViewTest, ShowsEachQuakeForFifteenSecondsAndStoresFiveInPlaceOfNothing) {
    for (const auto& [before, after] : {std::pair{0, 5}, {120, 120}, {-7, -7}}) {
        stored() = before;
        TellmarScreenSaverView view;
        view.initWithFrame(kFrame, false);
        EXPECT_EQ(view.displayForSec(), 15);
        EXPECT_EQ(view.animationTimeInterval(), 15.0);
        EXPECT_EQ(stored(), after);
    }
}

TEST_F(TellmarScreenSaverViewTest, LoadsItsSheetOnceAndDeniesIt) {
    start();
    EXPECT_FALSE(mView.hasConfigureSheet());
    standins::configSheet().canLoad = false;
    EXPECT_THAT(mView.configureSheet(), IsNull());
    EXPECT_THAT(standins::alertRecord().logLines, ElementsAre("Failed to load config panel!"));
    EXPECT_EQ(standins::alertRecord().beeps, 1);

    standins::configSheet().canLoad = true;
    EXPECT_EQ(mView.configureSheet(), &standins::configSheet().panel);
    EXPECT_EQ(mView.configureSheet(), &standins::configSheet().panel);
    EXPECT_EQ(standins::configSheet().loads, 1);
    EXPECT_EQ(standins::alertRecord().beeps, 1);
}

TEST_F(TellmarScreenSaverViewTest, SavesTheTimeThatTheRateSliderStandsForButNotOnCancel) {
    start();
    standins::ConfigSheet& sheet = standins::configSheet();
    mView.configureSheet();
    sheet.zoomSlider.value = 99;
    for (const auto& [slider, seconds] : {std::pair{345, 5}, {50, 300}, {350, 0}, {360, -10}}) {
        sheet.rateSlider.value = slider;
        sheet.pressOK();
        EXPECT_EQ(stored(), seconds);
        EXPECT_EQ(mView.displayForSec(), seconds);
    }
    EXPECT_THAT(standins::storedDefaults()[kModule], SizeIs(1));
    sheet.rateSlider.value = 100;
    sheet.pressCancel();
    EXPECT_EQ(stored(), -10);
    EXPECT_EQ(sheet.ends, 5);
}

}  // namespace
