#include "saver/InitialView.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/standins/Bundle.h"
#include "tests/standins/Canvas.h"
#include "tests/standins/StandIns.h"

namespace {

using platform::Point;
using ::testing::ElementsAre;
using ::testing::EndsWith;
using ::testing::SizeIs;

class InitialViewTest : public standins::Test {
  protected:
    // Draws part of a view of that size and returns what came of it.
    platform::Canvas::Backing& draw(const platform::Size& size, const platform::Rect& part) {
        InitialView view;
        view.initWithFrame({5, 5, size.width, size.height});
        view.setCanvas(mCanvas.get());
        view.drawRect(part);
        return mCanvas->backing();
    }

    std::unique_ptr<platform::Canvas> mCanvas = standins::makeCanvas();
};

TEST_F(InitialViewTest, DrawsTheMapOverTheBackgroundAndTheTextOverBoth) {
    const auto& drawn = draw({1000, 800}, {0, 0, 1000, 800});
    EXPECT_THAT(drawn.order, ElementsAre("fill", "image", "text", "text"));
    EXPECT_EQ(drawn.fills[0].rect, (platform::Rect{0, 0, 1000, 800}));
    EXPECT_EQ(drawn.fills[0].color, (platform::Color{0.6, 0.7019609808921814, 0.8, 1}));

    const auto& image = drawn.drawnImages[0];
    EXPECT_THAT(image.path, EndsWith("/google_maps_nz.png"));
    EXPECT_EQ(image.point, (Point{200, 200}));
    EXPECT_EQ(image.operation, platform::CompositingOperation::SourceAtop);
    EXPECT_EQ(image.fraction, 0.3);
}

TEST_F(InitialViewTest, StrokesOnlyTheNotice) {
    const auto& texts = draw({1000, 800}, {0, 0, 1000, 800}).texts;
    ASSERT_THAT(texts, SizeIs(2));
    EXPECT_EQ(texts[0].text,
              "We acknowledge the New Zealand GeoNet project and its sponsors EQC, GNS Science and LINZ, for "
              "providing data/images used in this study.");
    EXPECT_EQ(texts[0].point, (Point{10, 755}));
    EXPECT_EQ(texts[0].attributes, (platform::TextAttributes{"Verdana", 12, {0, 0, 0, 0.75}, 0}));

    EXPECT_EQ(texts[1].text, "All real time earthquake data provided by GeoNet (www.geonet.org.nz).");
    EXPECT_EQ(texts[1].point, (Point{10, 775}));
    EXPECT_EQ(texts[1].attributes, (platform::TextAttributes{"Verdana", 12, {0, 0, 0, 0.75}, -2}));
}

TEST_F(InitialViewTest, CentresTheMapOnTheSizeOfThePartThatIsDrawn) {
    const auto& drawn = draw({1000, 800}, {300, 100, 200, 100});
    EXPECT_EQ(drawn.fills[0].rect, (platform::Rect{300, 100, 200, 100}));
    EXPECT_EQ(drawn.drawnImages[0].point, (Point{-200, -150}));
    EXPECT_EQ(drawn.texts[0].point, (Point{10, 755}));
}

TEST_F(InitialViewTest, RunsOutOfAViewThatIsTooLow) {
    const auto& texts = draw({100, 40}, {0, 0, 100, 40}).texts;
    EXPECT_EQ(texts[0].point, (Point{10, -5}));
    EXPECT_EQ(texts[1].point, (Point{10, 15}));
}

TEST_F(InitialViewTest, DrawsTheRestWithoutTheImage) {
    standins::bundle().resources.erase("google_maps_nz.png");
    EXPECT_THAT(draw({1000, 800}, {0, 0, 1000, 800}).order, ElementsAre("fill", "text", "text"));
}

}  // namespace
