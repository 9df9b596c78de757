#include "platform/portable/View.h"

#include <gtest/gtest.h>

#include <limits>

namespace {

using platform::Rect;
using platform::View;

TEST(ViewTest, TakesOnlyRectangles) {
    constexpr double kInfinity = std::numeric_limits<double>::infinity();
    View view;
    EXPECT_EQ(view.initWithFrame({-5, -5, 0, 0}), &view);
    for (const Rect& none : {Rect{0, 0, -1, 5}, Rect{0, 0, kInfinity, 5}, Rect{-kInfinity, 0, 5, 5}})
        EXPECT_EQ(view.initWithFrame(none), nullptr);
    EXPECT_EQ(view.frame(), (Rect{-5, -5, 0, 0}));
}

TEST(ViewTest, SubviewsKeepTheirDistanceFromEveryEdge) {
    View root;
    root.initWithFrame({7, 7, 800, 600});
    root.addSubview(std::make_unique<View>());
    View* const child = root.subviews()[0]->initWithFrame(root.bounds());
    child->addSubview(std::make_unique<View>());
    View* const grandchild = child->subviews()[0]->initWithFrame({-10, 0, 810, 610});
    root.setFrame({0, 0, 1000, 500});
    EXPECT_EQ(child->frame(), (Rect{0, 0, 1000, 500}));
    EXPECT_EQ(grandchild->frame(), (Rect{-10, 0, 1010, 510}));
}

TEST(ViewTest, SubviewsKnowTheWindow) {
    View root;
    root.addSubview(std::make_unique<View>());
    auto* const window = reinterpret_cast<platform::Window*>(&root);  // only its address counts
    root.setWindow(window);
    EXPECT_EQ(root.subviews()[0]->window(), window);
}

}  // namespace
