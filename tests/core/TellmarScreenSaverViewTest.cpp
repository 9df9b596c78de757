#include "saver/TellmarScreenSaverView.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "mappages/SingleQuakeView.h"
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
using ::testing::ElementsAre;
using ::testing::EndsWith;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::IsNull;
using ::testing::NotNull;
using ::testing::SizeIs;
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

    platform::View* subview(std::size_t index) { return mView.subviews().at(index).get(); }
    platform::View* quakeViewA() { return subview(0); }
    platform::View* quakeViewB() { return subview(1); }
    platform::View* splash() { return subview(2); }

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

    static void expectFade(const standins::StartedFade& fade, platform::View* in, platform::View* out) {
        ASSERT_THAT(fade.descriptions, SizeIs(2));
        EXPECT_EQ(fade.descriptions[0].target, in);
        EXPECT_EQ(fade.descriptions[0].effect, platform::NSViewAnimationFadeInEffect);
        EXPECT_EQ(fade.descriptions[0].endFrame, kBounds);
        EXPECT_EQ(fade.descriptions[1].target, out);
        EXPECT_EQ(fade.descriptions[1].effect, platform::NSViewAnimationFadeOutEffect);
        EXPECT_EQ(fade.descriptions[1].endFrame, kBounds);
        EXPECT_EQ(fade.blockingMode, platform::NSAnimationBlocking);
    }

    std::unique_ptr<platform::Canvas> mCanvas = standins::makeCanvas();
    TellmarScreenSaverView mView;
};

TEST_F(TellmarScreenSaverViewTest, StacksTheSplashOverTwoHiddenQuakeViews) {
    start();
    ASSERT_THAT(mView.subviews(), SizeIs(3));
    EXPECT_THAT(dynamic_cast<SingleQuakeView*>(quakeViewA()), NotNull());
    EXPECT_THAT(dynamic_cast<SingleQuakeView*>(quakeViewB()), NotNull());
    EXPECT_THAT(dynamic_cast<InitialView*>(splash()), NotNull());
    for (const auto& each : mView.subviews()) EXPECT_EQ(each->frame(), kBounds);
    EXPECT_THAT(visible(), ElementsAre(splash()));
    EXPECT_EQ(mView.mode(), Mode::Splash);
}

TEST_F(TellmarScreenSaverViewTest, LoadsTheFirstQuakeIntoAAndTheSecondIntoB) {
    start();
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

TEST_F(TellmarScreenSaverViewTest, HoldsTheSplashUntilAPageIsThere) {
    start();
    tick(4);
    EXPECT_EQ(mView.mode(), Mode::Splash);
    finishALoad();
    tick();
    EXPECT_EQ(mView.mode(), Mode::PageSeen);
    EXPECT_THAT(visible(), ElementsAre(splash()));
    EXPECT_THAT(standins::fades().started, IsEmpty());
    tick();
    EXPECT_EQ(mView.mode(), Mode::Cycling);
    EXPECT_THAT(visible(), ElementsAre(quakeViewB()));
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

TEST_F(TellmarScreenSaverViewTest, FadesTheSplashOutInOneSecond) {
    startCycling();
    ASSERT_THAT(standins::fades().started, SizeIs(1));
    expectFade(standins::fades().started[0], quakeViewB(), splash());
    EXPECT_EQ(standins::fades().started[0].duration, 1.0);
    EXPECT_THAT(loadsOf(quakeViewA()), SizeIs(1));
    EXPECT_THAT(loadsOf(quakeViewB()), SizeIs(1));
}

TEST_F(TellmarScreenSaverViewTest, SwapsTheQuakeViewsAtEveryTickReadyOrNot) {
    startCycling();
    tick();
    EXPECT_THAT(visible(), ElementsAre(quakeViewA()));
    tick();
    EXPECT_THAT(visible(), ElementsAre(quakeViewB()));
    tick();
    EXPECT_THAT(visible(), ElementsAre(quakeViewA()));

    const auto& fades = standins::fades().started;
    ASSERT_THAT(fades, SizeIs(4));
    expectFade(fades[1], quakeViewA(), quakeViewB());
    expectFade(fades[2], quakeViewB(), quakeViewA());
    expectFade(fades[3], quakeViewA(), quakeViewB());
    EXPECT_EQ(fades[1].duration, platform::ViewAnimation::kDefaultDuration);
    EXPECT_NE(fades[1].duration, fades[0].duration);
}

TEST_F(TellmarScreenSaverViewTest, LoadsTheNextQuakeIntoTheViewThatWentOutOfSight) {
    startCycling();
    tick(3);
    const auto& ofA = loadsOf(quakeViewA());
    const auto& ofB = loadsOf(quakeViewB());
    ASSERT_THAT(ofA, SizeIs(2));
    ASSERT_THAT(ofB, SizeIs(3));
    EXPECT_THAT(ofB[1].page, HasSubstr("(1.000, "));
    EXPECT_THAT(ofA[1].page, HasSubstr("(0.000, "));
    EXPECT_THAT(ofB[2].page, HasSubstr("(3.000, "));
    EXPECT_TRUE(ofB[1].superviewWasHidden);
    EXPECT_TRUE(ofA[1].superviewWasHidden);
}

TEST_F(TellmarScreenSaverViewTest, EndsTheLastFadeBeforeTheNext) {
    startCycling();
    EXPECT_EQ(standins::fades().stopped, 0);
    EXPECT_EQ(standins::fades().alive, 1);
    tick();
    EXPECT_EQ(standins::fades().stopped, 1);
    EXPECT_EQ(standins::fades().alive, 1);
}

TEST_F(TellmarScreenSaverViewTest, GoesOnWhereItWasAfterAStop) {
    startCycling();
    mView.startAnimation();
    EXPECT_TRUE(mView.isAnimating());
    mView.stopAnimation();
    EXPECT_FALSE(mView.isAnimating());
    EXPECT_EQ(standins::fades().stopped, 0);
    EXPECT_EQ(standins::fades().alive, 1);
    mView.startAnimation();
    tick();
    EXPECT_THAT(visible(), ElementsAre(quakeViewA()));
}

TEST_F(TellmarScreenSaverViewTest, KeepsTheSplashWithoutQuakes) {
    standins::urlLoading().answerToAll.reset();
    start();
    tick(5);
    EXPECT_THAT(visible(), ElementsAre(splash()));
}

TEST_F(TellmarScreenSaverViewTest, PaintsThePreviewAndNothingElse) {
    start(true);
    EXPECT_THAT(loadsOf(quakeViewB()), SizeIs(1));
    finishALoad();
    tick();
    const auto& drawn = mCanvas->backing();
    EXPECT_THAT(drawn.order, ElementsAre("image", "text"));
    EXPECT_THAT(drawn.drawnImages[0].path, EndsWith("/google_maps_nz_pre.png"));
    EXPECT_EQ(drawn.drawnImages[0].rect, kBounds);
    EXPECT_EQ(drawn.drawnImages[0].operation, platform::CompositingOperation::Copy);
    EXPECT_EQ(drawn.drawnImages[0].fraction, 1.0);
    EXPECT_EQ(drawn.texts[0].rect, (Rect{7.5, 2, 785, 596}));
    EXPECT_EQ(drawn.texts[0].attributes, (platform::TextAttributes{"Arial", 9, {0, 0, 0, 0.75}, -1.5}));
    EXPECT_EQ(drawn.texts[0].text,
              "We acknowledge the New Zealand GeoNet project and its sponsors EQC, GNS Science and LINZ, for "
              "providing data/images used in this study.");

    tick(3);
    EXPECT_THAT(drawn.loadedImages, SizeIs(4));
    EXPECT_EQ(mView.mode(), Mode::Splash);
    EXPECT_THAT(standins::fades().started, IsEmpty());
}

TEST_F(TellmarScreenSaverViewTest, PaintsTheAcknowledgementWithoutThePreviewImage) {
    standins::bundle().resources.erase("google_maps_nz_pre.png");
    start(true);
    tick();
    EXPECT_THAT(mCanvas->backing().order, ElementsAre("text"));
}

TEST_F(TellmarScreenSaverViewTest, ShowsEachQuakeForFifteenSecondsWhateverIsStored) {
    standins::storedDefaults()[kModule][kKey] = 120;
    start();
    EXPECT_EQ(mView.displayForSec(), 15);
    EXPECT_EQ(mView.animationTimeInterval(), 15.0);
    EXPECT_EQ(standins::storedDefaults()[kModule][kKey], 120);
}

TEST_F(TellmarScreenSaverViewTest, StoresFiveSecondsInPlaceOfNothing) {
    start();
    EXPECT_EQ(standins::storedDefaults()[kModule][kKey], 5);
    standins::storedDefaults()[kModule][kKey] = 0;
    TellmarScreenSaverView().initWithFrame(kFrame, false);
    EXPECT_EQ(standins::storedDefaults()[kModule][kKey], 5);
    standins::storedDefaults()[kModule][kKey] = -7;
    TellmarScreenSaverView().initWithFrame(kFrame, false);
    EXPECT_EQ(standins::storedDefaults()[kModule][kKey], -7);
}

TEST_F(TellmarScreenSaverViewTest, LoadsItsSheetOnceAndDeniesIt) {
    start();
    standins::ConfigSheet& sheet = standins::configSheet();
    EXPECT_FALSE(mView.hasConfigureSheet());
    EXPECT_EQ(mView.configureSheet(), &sheet.panel);
    EXPECT_EQ(mView.configureSheet(), &sheet.panel);
    EXPECT_THAT(sheet.loadedNames, ElementsAre("ConfigPanel"));
    EXPECT_EQ(standins::alertRecord().beeps, 0);
}

TEST_F(TellmarScreenSaverViewTest, BeepsForASheetThatCannotBeLoadedAndTriesAgain) {
    start();
    standins::configSheet().canLoad = false;
    EXPECT_THAT(mView.configureSheet(), IsNull());
    EXPECT_THAT(standins::alertRecord().logLines, ElementsAre("Failed to load config panel!"));
    EXPECT_EQ(standins::alertRecord().beeps, 1);
    standins::configSheet().canLoad = true;
    EXPECT_THAT(mView.configureSheet(), NotNull());
}

TEST_F(TellmarScreenSaverViewTest, SavesTheTimeThatTheRateSliderStandsFor) {
    start();
    standins::ConfigSheet& sheet = standins::configSheet();
    mView.configureSheet();
    sheet.zoomSlider.value = 99;
    for (const auto& [slider, seconds] : {std::pair{345, 5}, {50, 300}, {350, 0}, {360, -10}}) {
        sheet.rateSlider.value = slider;
        sheet.pressOK();
        EXPECT_EQ(standins::storedDefaults()[kModule][kKey], seconds);
        EXPECT_EQ(mView.displayForSec(), seconds);
    }
    EXPECT_THAT(standins::storedDefaults()[kModule], SizeIs(1));
    EXPECT_THAT(sheet.ended, SizeIs(4));
    EXPECT_EQ(sheet.ended.back(), &sheet.panel);
}

TEST_F(TellmarScreenSaverViewTest, StoresNothingOnCancel) {
    start();
    standins::ConfigSheet& sheet = standins::configSheet();
    mView.configureSheet();
    sheet.rateSlider.value = 100;
    sheet.pressCancel();
    EXPECT_EQ(standins::storedDefaults()[kModule][kKey], 5);
    EXPECT_THAT(sheet.ended, ElementsAre(&sheet.panel));
}

}  // namespace
