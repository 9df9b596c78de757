#include "saver/TellmarScreenSaverView.h"

#include "mappages/SingleQuakeView.h"
#include "platform/Bundle.h"
#include "platform/ScreenSaverDefaults.h"
#include "tests/TemporaryFolder.h"
#include "tests/standins/StandIns.h"

namespace {

using platform::Rect, platform::ScreenSaverDefaults, platform::View;
using standins::desktop, standins::Fade;
using testing::ElementsAre, testing::HasSubstr, testing::IsEmpty, testing::SizeIs;
using Mode = TellmarScreenSaverView::Mode;

constexpr char kTime[] = "DisplayQuakeForNSeconds";
constexpr Rect kFrame{40, 50, 800, 600}, kBounds{0, 0, 800, 600};
// Parts of the texts.
constexpr char kAcknowledgement[] = "sponsors EQC, GNS Science and LINZ";
constexpr char kNotice[] = "data provided by GeoNet";

class TellmarScreenSaverViewTest : public standins::Test {
  protected:
    TellmarScreenSaverViewTest() {
        setenv("XDG_CONFIG_HOME", mSettings.path().c_str(), true);
        serveQuakes({4, 5, 6, 7});
        mView.setCanvas(&mCanvas);
    }

    void start(bool isPreview = false) { ASSERT_EQ(mView.initWithFrame(kFrame, isPreview), &mView); }

    void tick(int times = 1) {
        for (int i = 0; i < times; ++i) mView.animateOneFrame();
    }

    SingleQuakeView* quakeView(int index) {
        return &dynamic_cast<SingleQuakeView&>(*mView.subviews().at(index));
    }
    View* splash() { return mView.subviews().at(2).get(); }

    static ScreenSaverDefaults settings() {
        return ScreenSaverDefaults::defaultsForModuleWithName(platform::bundleIdentifier());
    }

    static std::vector<platform::WebView::Backing::Load>& loadsOf(View* quakeView) {
        return dynamic_cast<platform::WebView&>(*quakeView->subviews().at(0)).backing().loads;
    }

    // What has been drawn since the last call, in this order.
    static std::vector<std::string> drawn() {
        std::vector<std::string> names;
        for (const auto& each : std::exchange(desktop.drawings, {})) names.push_back(each.what);
        return names;
    }

    const TemporaryFolder mSettings;
    platform::Canvas mCanvas{std::make_unique<platform::Canvas::Backing>()};
    TellmarScreenSaverView mView;
};

TEST_F(TellmarScreenSaverViewTest, TheSplashCoversTwoQuakeViewsThatLoad) {
    start();
    ASSERT_THAT(mView.subviews(), SizeIs(3));
    for (const auto& each : mView.subviews()) {
        EXPECT_EQ(each->frame(), kBounds);
        EXPECT_EQ(each->isHidden(), each.get() != splash());
    }
    EXPECT_THAT(desktop.requests, SizeIs(1));
    EXPECT_THAT(loadsOf(quakeView(0)).at(0).page, HasSubstr("(3.000, 172.713, 7.00"));
    EXPECT_THAT(loadsOf(quakeView(1)).at(0).page, HasSubstr("(2.000, 172.713, 6.00"));
}

TEST_F(TellmarScreenSaverViewTest, TheSplashDrawsItsTextsOverTheMap) {
    start();
    splash()->setCanvas(&mCanvas);
    splash()->drawRect({300, 100, 200, 100});
    EXPECT_EQ(desktop.drawings.at(0).place, (Rect{300, 100, 200, 100}));
    EXPECT_EQ(desktop.drawings.at(1).place, (Rect{-200, -150, 0, 0}));  // centred on the size of that part
    for (int text : {2, 3}) {
        EXPECT_LT(desktop.drawings.at(text).place.y, kBounds.height - 20);
        EXPECT_GT(desktop.drawings.at(text).place.y, kBounds.height / 2);
    }
    EXPECT_THAT(drawn(), ElementsAre("fill", platform::pathForResource("google_maps_nz.png"),
                                     HasSubstr(kAcknowledgement), HasSubstr(kNotice)));
    desktop.resources.clear();
    splash()->drawRect(kBounds);
    EXPECT_THAT(drawn(), ElementsAre("fill", HasSubstr(kAcknowledgement), HasSubstr(kNotice)));
}

TEST_F(TellmarScreenSaverViewTest, HoldsTheSplashUntilTheSecondTickThatFindsBComplete) {
    start();
    tick(4);
    EXPECT_EQ(mView.mode(), Mode::Splash);
    finishALoad();
    tick();
    quakeView(1)->loadNextPage();
    tick(3);
    EXPECT_EQ(mView.mode(), Mode::PageSeen);
    finishALoad();
    quakeView(0)->loadNextPage();
    tick();
    EXPECT_EQ(mView.mode(), Mode::Cycling);
    EXPECT_THAT(desktop.fades, ElementsAre(Fade{quakeView(1), splash(), 1.0}));
    for (int index : {0, 1}) EXPECT_THAT(loadsOf(quakeView(index)), SizeIs(2));
}

TEST_F(TellmarScreenSaverViewTest, SwapsAtEveryTick) {
    start();
    finishALoad();
    tick(2);
    View *const a = quakeView(0), *const b = quakeView(1);
    for (View* const shown : {a, b, a}) {
        tick();
        EXPECT_FALSE(shown->isHidden());
        EXPECT_TRUE(loadsOf(shown == a ? b : a).back().superviewWasHidden);
    }
    EXPECT_EQ(desktop.fadesStopped, 3);  // each before the next began
    EXPECT_EQ(desktop.fades.back(), (Fade{a, b, platform::ViewAnimation::kDefaultDuration}));
}

TEST_F(TellmarScreenSaverViewTest, PaintsOnlyThePreview) {
    start(true);
    finishALoad();
    tick();
    EXPECT_THAT(drawn(), ElementsAre(platform::pathForResource("google_maps_nz_pre.png"),
                                     HasSubstr(kAcknowledgement)));
    desktop.resources.clear();
    tick();
    EXPECT_THAT(drawn(), ElementsAre(HasSubstr(kAcknowledgement)));
    EXPECT_EQ(mView.mode(), Mode::Splash);
}

TEST_F(TellmarScreenSaverViewTest, ShowsEachQuakeForFifteenSecondsWhateverIsStored) {
    for (const auto& [before, after] : {std::pair{0, 5}, {-7, -7}}) {
        auto initial = settings();
        initial.setInteger(before, kTime);
        initial.synchronize();
        start();
        EXPECT_EQ(mView.displayForSec(), 15);
        EXPECT_EQ(mView.animationTimeInterval(), 15.0);
        EXPECT_EQ(settings().integerForKey(kTime), after);
    }
}

TEST_F(TellmarScreenSaverViewTest, ItsOneSheetSavesTheTimeThatTheRateSliderStandsFor) {
    start();
    EXPECT_FALSE(mView.hasConfigureSheet());
    for (int time = 0; time < 2; ++time) EXPECT_EQ(mView.configureSheet(), &desktop.panel);
    EXPECT_EQ(desktop.sheetLoads, 1);
    desktop.rateSlider.value = 360;
    desktop.ok(nullptr);
    desktop.rateSlider.value = 100;
    desktop.cancel(nullptr);
    EXPECT_EQ(settings().integerForKey(kTime), -10);
    EXPECT_EQ(mView.displayForSec(), -10);
    EXPECT_EQ(desktop.sheetEnds, 2);
}

}  // namespace
