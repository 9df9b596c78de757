#include "saver/TellmarScreenSaverView.h"

#include "mappages/SingleQuakeView.h"
#include "platform/Bundle.h"
#include "tests/standins/StandIns.h"

namespace {

using platform::Rect, platform::View;
using standins::desktop, standins::Fade;
using testing::ElementsAre, testing::HasSubstr, testing::IsEmpty, testing::SizeIs;
using Mode = TellmarScreenSaverView::Mode;

constexpr Rect kFrame{40, 50, 800, 600}, kBounds{0, 0, 800, 600};
constexpr char kAcknowledgement[] =
    "We acknowledge the New Zealand GeoNet project and its sponsors EQC, GNS Science and LINZ, for providing "
    "data/images used in this study.";
constexpr char kNotice[] = "All real time earthquake data provided by GeoNet (www.geonet.org.nz).";

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

    SingleQuakeView* quakeView(int index) {
        return &dynamic_cast<SingleQuakeView&>(*mView.subviews().at(index));
    }
    View* splash() { return mView.subviews().at(2).get(); }

    static std::map<std::string, int>& stored() {
        return desktop.storedDefaults["org.tellmar.TellmarScreenSaver"];
    }

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

    // What has been drawn since the last call, in this order.
    static std::vector<std::string> drawn() {
        std::vector<std::string> names;
        for (const auto& each : std::exchange(desktop.drawings, {})) names.push_back(each.what);
        return names;
    }

    platform::Canvas mCanvas{std::make_unique<platform::Canvas::Backing>()};
    TellmarScreenSaverView mView;
};

TEST_F(TellmarScreenSaverViewTest, TheSplashCoversTwoQuakeViewsThatLoad) {
    EXPECT_EQ(mView.initWithFrame({0, 0, 800, -1}, false), nullptr);
    start();
    ASSERT_THAT(mView.subviews(), SizeIs(3));
    for (const auto& each : mView.subviews()) EXPECT_EQ(each->frame(), kBounds);
    EXPECT_THAT(visible(), ElementsAre(splash()));
    EXPECT_THAT(desktop.asked, SizeIs(1));
    EXPECT_THAT(loadsOf(quakeView(0)).at(0).page, HasSubstr("(3.000, 172.713, 7.00"));
    EXPECT_THAT(loadsOf(quakeView(1)).at(0).page, HasSubstr("(2.000, 172.713, 6.00"));
}

TEST_F(TellmarScreenSaverViewTest, TheSplashDrawsItsTextsOverTheMap) {
    start();
    splash()->setCanvas(&mCanvas);
    splash()->drawRect({300, 100, 200, 100});
    EXPECT_EQ(desktop.drawings.at(0).place, (Rect{300, 100, 200, 100}));
    EXPECT_EQ(desktop.drawings.at(1).place, (Rect{-200, -150, 0, 0}));  // centred on the size of that part
    for (int text : {2, 3}) EXPECT_LT(desktop.drawings.at(text).place.y, kBounds.height - 20);
    EXPECT_THAT(drawn(), ElementsAre("fill", platform::pathForResource("google_maps_nz.png"),
                                     kAcknowledgement, kNotice));
    desktop.resources.clear();
    splash()->drawRect(kBounds);
    EXPECT_THAT(drawn(), ElementsAre("fill", kAcknowledgement, kNotice));
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
        EXPECT_THAT(visible(), ElementsAre(shown));
        EXPECT_TRUE(loadsOf(shown == a ? b : a).back().superviewWasHidden);
        EXPECT_EQ(desktop.fadesAlive, 1);
    }
    EXPECT_EQ(desktop.fadesStopped, 3);  // each before the next began
    constexpr double kUsual = platform::ViewAnimation::kDefaultDuration;
    EXPECT_THAT(desktop.fades, ElementsAre(Fade{b, splash(), 1.0}, Fade{a, b, kUsual}, Fade{b, a, kUsual},
                                           Fade{a, b, kUsual}));
    EXPECT_THAT(loadsOf(a).at(1).page, HasSubstr("(0.000, "));
    EXPECT_THAT(loadsOf(b).at(2).page, HasSubstr("(3.000, "));
}

TEST_F(TellmarScreenSaverViewTest, AnimatesFromStartToStop) {
    mView.startAnimation();
    EXPECT_TRUE(mView.isAnimating());
    mView.stopAnimation();
    EXPECT_FALSE(mView.isAnimating());
}

TEST_F(TellmarScreenSaverViewTest, PaintsOnlyThePreview) {
    start(true);
    finishALoad();
    tick();
    for (const auto& each : desktop.drawings) EXPECT_LE(each.place.x + each.place.width, kBounds.width);
    EXPECT_THAT(drawn(), ElementsAre(platform::pathForResource("google_maps_nz_pre.png"), kAcknowledgement));
    desktop.resources.clear();
    tick();
    EXPECT_THAT(drawn(), ElementsAre(kAcknowledgement));
    EXPECT_EQ(mView.mode(), Mode::Splash);
}

TEST_F(TellmarScreenSaverViewTest, ShowsEachQuakeForFifteenSecondsWhateverIsStored) {
    for (const auto& [before, after] : {std::pair{0, 5}, {120, 120}, {-7, -7}}) {
        stored()["DisplayQuakeForNSeconds"] = before;
        TellmarScreenSaverView view;
        view.initWithFrame(kFrame, false);
        EXPECT_EQ(view.displayForSec(), 15);
        EXPECT_EQ(view.animationTimeInterval(), 15.0);
        EXPECT_EQ(stored()["DisplayQuakeForNSeconds"], after);
    }
}

TEST_F(TellmarScreenSaverViewTest, LoadsItsSheetOnce) {
    EXPECT_FALSE(mView.hasConfigureSheet());
    desktop.hasSheet = false;
    EXPECT_EQ(mView.configureSheet(), nullptr);
    desktop.hasSheet = true;
    for (int time = 0; time < 2; ++time) EXPECT_EQ(mView.configureSheet(), &desktop.panel);
    EXPECT_EQ(desktop.sheetLoads, 1);
    EXPECT_THAT(desktop.logLines, ElementsAre("Failed to load config panel!"));
    EXPECT_EQ(desktop.beeps, 1);
}

TEST_F(TellmarScreenSaverViewTest, SavesTheTimeThatTheRateSliderStandsFor) {
    start();
    mView.configureSheet();
    desktop.zoomSlider.value = 99;
    for (const auto& [slider, seconds] : {std::pair{345, 5}, {350, 0}, {360, -10}}) {
        desktop.rateSlider.value = slider;
        desktop.ok(&desktop.okButton);
        EXPECT_THAT(stored(), ElementsAre(std::pair("DisplayQuakeForNSeconds", seconds)));
        EXPECT_EQ(mView.displayForSec(), seconds);
    }
    desktop.rateSlider.value = 100;
    desktop.cancel(&desktop.cancelButton);
    EXPECT_THAT(stored(), ElementsAre(std::pair("DisplayQuakeForNSeconds", -10)));
    EXPECT_EQ(desktop.sheetEnds, 4);
}

}  // namespace
