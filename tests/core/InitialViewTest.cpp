#include "saver/InitialView.h"

#include "platform/Bundle.h"
#include "tests/standins/StandIns.h"

namespace {

using platform::Rect;
using standins::desktop, standins::Drawing;

constexpr platform::Color kBackground{0.6, 0.7019609808921814, 0.8, 1}, kInk{0, 0, 0, 0.75};
constexpr char kAcknowledgement[] =
    "We acknowledge the New Zealand GeoNet project and its sponsors EQC, GNS Science and LINZ, for providing "
    "data/images used in this study.";
constexpr char kNotice[] = "All real time earthquake data provided by GeoNet (www.geonet.org.nz).";

using InitialViewTest = standins::Test;

void draw(const platform::Size& size, const Rect& part) {
    platform::Canvas canvas(std::make_unique<platform::Canvas::Backing>());
    InitialView view;
    view.initWithFrame({5, 5, size.width, size.height});
    view.setCanvas(&canvas);
    view.drawRect(part);
}

TEST_F(InitialViewTest, CentresTheMapOnTheSizeOfThePartThatIsDrawnAndDrawsTheRestWithoutIt) {
    const Rect part{300, 100, 200, 100};
    const Drawing background{.place = part, .color = kBackground};
    const Drawing map{.what = platform::pathForResource("google_maps_nz.png"),
                      .place = {-200, -150, 0, 0},
                      .operation = platform::CompositingOperation::SourceAtop,
                      .fraction = 0.3};
    const Drawing acknowledgement{
        .what = kAcknowledgement, .place = {10, 755, 0, 0}, .attributes = {"Verdana", 12, kInk, 0}};
    const Drawing notice{.what = kNotice, .place = {10, 775, 0, 0}, .attributes = {"Verdana", 12, kInk, -2}};
    draw({1000, 800}, part);
    desktop.resources.erase("google_maps_nz.png");
    draw({1000, 800}, part);
    EXPECT_THAT(desktop.drawings, testing::ElementsAre(background, map, acknowledgement, notice, background,
                                                       acknowledgement, notice));
}

}  // namespace
