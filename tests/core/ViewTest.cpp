#include "platform/portable/View.h"

#include <gtest/gtest.h>

#include <limits>
#include <utility>

namespace {

using platform::Rect;
using platform::View;

View* addTo(View& parent, const Rect& frame) {
    auto owned = std::make_unique<View>();
    View* const view = owned->initWithFrame(frame);
    parent.addSubview(std::move(owned));
    return view;
}

TEST(ViewTest, TakesOnlyRectangles) {
    constexpr double kInfinity = std::numeric_limits<double>::infinity();
    View view;
    EXPECT_EQ(view.initWithFrame({-5, -5, 0, 0}), &view);
    for (const Rect& none : {Rect{0, 0, -1, 5}, Rect{0, 0, kInfinity, 5}, Rect{-kInfinity, 0, 5, 5}})
        EXPECT_EQ(view.initWithFrame(none), nullptr);
    EXPECT_EQ(view.frame(), (Rect{-5, -5, 0, 0}));
}

TEST(ViewTest, SubviewsKeepTheirDistanceFromEveryEdgeAndKnowTheWindow) {
    View root;
    root.initWithFrame({7, 7, 800, 600});
    View* const child = addTo(root, root.bounds());
    View* const grandchild = addTo(*child, {-10, 0, 810, 610});
    root.setFrame({0, 0, 1000, 500});
    EXPECT_EQ(child->frame(), (Rect{0, 0, 1000, 500}));
    EXPECT_EQ(grandchild->frame(), (Rect{-10, 0, 1010, 510}));
    EXPECT_EQ(grandchild->bounds(), (Rect{0, 0, 1010, 510}));

    EXPECT_EQ(grandchild->window(), nullptr);
    int stand = 0;
    auto* const window = reinterpret_cast<platform::Window*>(&stand);
    root.setWindow(window);
    EXPECT_EQ(grandchild->window(), window);
}

}  // namespace
