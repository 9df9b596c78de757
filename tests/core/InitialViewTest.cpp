#include "saver/InitialView.h"

#include <gmock/gmock.h>

#include "platform/Bundle.h"
#include "tests/standins/Bundle.h"
#include "tests/standins/Canvas.h"
#include "tests/standins/StandIns.h"

namespace {

using platform::Rect;
using standins::Drawing;
using testing::ElementsAre;

constexpr platform::Color kBackground{0.6, 0.7019609808921814, 0.8, 1}, kInk{0, 0, 0, 0.75};
constexpr char kAcknowledgement[] =
    "We acknowledge the New Zealand GeoNet project and its sponsors EQC, GNS Science and LINZ, for providing "
    "data/images used in this study.";
constexpr char kNotice[] = "All real time earthquake data provided by GeoNet (www.geonet.org.nz).";

class InitialViewTest : public standins::Test {
  protected:
    // Draws part of a view of that size and returns what came of it.
    std::vector<Drawing>& draw(const platform::Size& size, const Rect& part) {
        InitialView view;
        view.initWithFrame({5, 5, size.width, size.height});
        view.setCanvas(mCanvas.get());
        view.drawRect(part);
        return mCanvas->backing().drawings;
    }

    std::unique_ptr<platform::Canvas> mCanvas = standins::makeCanvas();
};

TEST_F(InitialViewTest, DrawsTheMapOverTheBackgroundAndTheTextOverBoth) {
    EXPECT_THAT(
        draw({1000, 800}, {0, 0, 1000, 800}),
        ElementsAre(
            Drawing{.what = "fill", .place = {0, 0, 1000, 800}, .color = kBackground},
            Drawing{.what = platform::pathForResource("google_maps_nz.png"),
                    .place = {200, 200, 0, 0},
                    .operation = platform::CompositingOperation::SourceAtop,
                    .fraction = 0.3},
            Drawing{
                .what = kAcknowledgement, .place = {10, 755, 0, 0}, .attributes = {"Verdana", 12, kInk, 0}},
            Drawing{.what = kNotice, .place = {10, 775, 0, 0}, .attributes = {"Verdana", 12, kInk, -2}}));
}

TEST_F(InitialViewTest, CentresTheMapOnTheSizeOfThePartThatIsDrawn) {
    const auto& drawn = draw({1000, 40}, {300, 100, 200, 100});
    EXPECT_EQ(drawn[0].place, (Rect{300, 100, 200, 100}));
    EXPECT_EQ(drawn[1].place, (Rect{-200, -150, 0, 0}));
    EXPECT_EQ(drawn[2].place, (Rect{10, -5, 0, 0}));  // the view is too low for its texts
    EXPECT_EQ(drawn[3].place, (Rect{10, 15, 0, 0}));
}

TEST_F(InitialViewTest, DrawsTheRestWithoutTheImage) {
    standins::bundle().resources.erase("google_maps_nz.png");
    const auto& drawn = draw({1000, 800}, {0, 0, 1000, 800});
    ASSERT_EQ(drawn.size(), 3u);
    EXPECT_EQ(drawn[1].what, kAcknowledgement);
}

}  // namespace
