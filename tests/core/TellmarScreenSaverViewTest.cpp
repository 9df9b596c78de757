#include "saver/TellmarScreenSaverView.h"

#include "mappages/SingleQuakeView.h"
#include "platform/Bundle.h"
#include "saver/InitialView.h"
#include "tests/standins/StandIns.h"

namespace {

using platform::Rect, platform::View;
using standins::desktop, standins::Drawing, standins::Fade;
using testing::ElementsAre, testing::HasSubstr, testing::IsEmpty, testing::SizeIs;
using Mode = TellmarScreenSaverView::Mode;

constexpr Rect kFrame{40, 50, 800, 600}, kBounds{0, 0, 800, 600};
constexpr char kModule[] = "org.tellmar.TellmarScreenSaver";

class TellmarScreenSaverViewTest : public standins::Test {
  protected:
    TellmarScreenSaverViewTest() {
        serveQuakes({4, 5, 6, 7});
        mView.setCanvas(&mCanvas);
    }

    void start(bool isPreview = false) { ASSERT_EQ(mView.initWithFrame(kFrame, isPreview), &mView); }

    void tick(int times = 1) {
        for (int i = 0; i < times; ++i) mView.animateOneFrame();
    }

    // Starts the saver and brings it to the end of the splash's fade.
    void startCycling() {
        start();
        finishALoad();
        tick(2);
        ASSERT_EQ(mView.mode(), Mode::Cycling);
    }

    View* quakeViewA() { return mView.subviews().at(0).get(); }
    View* quakeViewB() { return mView.subviews().at(1).get(); }
    View* splash() { return mView.subviews().at(2).get(); }

    // The stored time that the display ought to follow.
    static int& stored() { return desktop.storedDefaults[kModule]["DisplayQuakeForNSeconds"]; }

    static std::vector<platform::WebView::Backing::Load>& loadsOf(View* quakeView) {
        return dynamic_cast<platform::WebView&>(*quakeView->subviews().at(0)).backing().loads;
    }

    // The views that are in sight, from the lowest to the uppermost.
    std::vector<View*> visible() {
        std::vector<View*> views;
        for (const auto& each : mView.subviews())
            if (!each->isHidden()) views.push_back(each.get());
        return views;
    }

    platform::Canvas mCanvas{std::make_unique<platform::Canvas::Backing>()};
    TellmarScreenSaverView mView;
};

TEST_F(TellmarScreenSaverViewTest, StacksTheSplashOverTwoHiddenQuakeViewsThatLoadInARectangle) {
    EXPECT_EQ(mView.initWithFrame({0, 0, 800, -1}, false), nullptr);
    EXPECT_THAT(mView.subviews(), IsEmpty());
    start();
    ASSERT_THAT(mView.subviews(), SizeIs(3));
    EXPECT_NE(dynamic_cast<SingleQuakeView*>(quakeViewA()), nullptr);
    EXPECT_NE(dynamic_cast<SingleQuakeView*>(quakeViewB()), nullptr);
    EXPECT_NE(dynamic_cast<InitialView*>(splash()), nullptr);
    for (const auto& each : mView.subviews()) EXPECT_EQ(each->frame(), kBounds);
    EXPECT_THAT(visible(), ElementsAre(splash()));

    EXPECT_THAT(desktop.asked, SizeIs(1));
    ASSERT_THAT(loadsOf(quakeViewA()), SizeIs(1));
    ASSERT_THAT(loadsOf(quakeViewB()), SizeIs(1));
    EXPECT_THAT(loadsOf(quakeViewA())[0].page, HasSubstr("(3.000, 172.713, 7.00"));
    EXPECT_THAT(loadsOf(quakeViewB())[0].page, HasSubstr("(2.000, 172.713, 6.00"));
}

TEST_F(TellmarScreenSaverViewTest, HoldsTheSplashUntilTheSecondTickThatFindsBComplete) {
    start();
    tick(4);
    EXPECT_EQ(mView.mode(), Mode::Splash);
    finishALoad();
    tick();
    static_cast<SingleQuakeView*>(quakeViewB())->loadNextPage();
    tick(3);
    EXPECT_EQ(mView.mode(), Mode::PageSeen);
    EXPECT_THAT(visible(), ElementsAre(splash()));
    EXPECT_THAT(desktop.fades, IsEmpty());

    finishALoad();
    static_cast<SingleQuakeView*>(quakeViewA())->loadNextPage();
    tick();
    EXPECT_EQ(mView.mode(), Mode::Cycling);
    EXPECT_THAT(visible(), ElementsAre(quakeViewB()));
    EXPECT_THAT(desktop.fades, ElementsAre(Fade{quakeViewB(), splash(), 1.0}));
    for (View* each : {quakeViewA(), quakeViewB()}) EXPECT_THAT(loadsOf(each), SizeIs(2));
}

TEST_F(TellmarScreenSaverViewTest, SwapsAtEveryTickAndLoadsIntoTheViewThatWentOutOfSight) {
    startCycling();
    View *const a = quakeViewA(), *const b = quakeViewB();
    for (View* const shown : {a, b, a}) {
        tick();
        EXPECT_THAT(visible(), ElementsAre(shown));
        EXPECT_TRUE(loadsOf(shown == a ? b : a).back().superviewWasHidden);
        EXPECT_EQ(shown->frame(), kBounds);
    }
    constexpr double kUsual = platform::ViewAnimation::kDefaultDuration;
    EXPECT_THAT(desktop.fades, ElementsAre(Fade{b, splash(), 1.0}, Fade{a, b, kUsual}, Fade{b, a, kUsual},
                                           Fade{a, b, kUsual}));
    ASSERT_THAT(loadsOf(a), SizeIs(2));
    ASSERT_THAT(loadsOf(b), SizeIs(3));
    EXPECT_THAT(loadsOf(b)[1].page, HasSubstr("(1.000, "));
    EXPECT_THAT(loadsOf(a)[1].page, HasSubstr("(0.000, "));
    EXPECT_THAT(loadsOf(b)[2].page, HasSubstr("(3.000, "));
}

TEST_F(TellmarScreenSaverViewTest, EndsTheLastFadeBeforeTheNextAndGoesOnAfterAStop) {
    startCycling();
    mView.startAnimation();
    EXPECT_TRUE(mView.isAnimating());
    mView.stopAnimation();
    EXPECT_FALSE(mView.isAnimating());
    EXPECT_EQ(desktop.fadesStopped, 0);
    tick();
    EXPECT_THAT(visible(), ElementsAre(quakeViewA()));
    EXPECT_EQ(desktop.fadesStopped, 1);
    EXPECT_EQ(desktop.fadesAlive, 1);
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
    desktop.resources.erase("google_maps_nz_pre.png");
    tick(2);
    EXPECT_THAT(desktop.drawings, ElementsAre(image, text, text, text));
    EXPECT_EQ(mView.mode(), Mode::Splash);
    EXPECT_THAT(desktop.fades, IsEmpty());
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
    desktop.hasSheet = false;
    EXPECT_EQ(mView.configureSheet(), nullptr);
    desktop.hasSheet = true;
    for (int time = 0; time < 2; ++time) EXPECT_EQ(mView.configureSheet(), &desktop.panel);
    EXPECT_EQ(desktop.sheetLoads, 1);
    EXPECT_THAT(desktop.logLines, ElementsAre("Failed to load config panel!"));
    EXPECT_EQ(desktop.beeps, 1);
}

TEST_F(TellmarScreenSaverViewTest, SavesTheTimeThatTheRateSliderStandsForButNotOnCancel) {
    start();
    mView.configureSheet();
    desktop.zoomSlider.value = 99;
    for (const auto& [slider, seconds] : {std::pair{345, 5}, {50, 300}, {350, 0}, {360, -10}}) {
        desktop.rateSlider.value = slider;
        desktop.ok(&desktop.okButton);
        EXPECT_EQ(stored(), seconds);
        EXPECT_EQ(mView.displayForSec(), seconds);
    }
    EXPECT_THAT(desktop.storedDefaults[kModule], SizeIs(1));
    desktop.rateSlider.value = 100;
    desktop.cancel(&desktop.cancelButton);
    EXPECT_EQ(stored(), -10);
    EXPECT_EQ(desktop.sheetEnds, 5);
}

}  // namespace
