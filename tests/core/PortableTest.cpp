#include "platform/portable/View.h"

#include <gtest/gtest.h>

#include <limits>

#include "platform/portable/NotificationCenter.h"

namespace {

using platform::NotificationCenter, platform::Rect, platform::View;

TEST(ViewTest, TakesOnlyRectangles) {
    constexpr double kInfinity = std::numeric_limits<double>::infinity();
    View view;
    EXPECT_EQ(view.initWithFrame({-5, -5, 0, 0}), &view);
    for (const Rect& none : {Rect{0, 0, -1, 5}, Rect{0, 0, kInfinity, 5}, Rect{-kInfinity, 0, 5, 5}})
        EXPECT_EQ(view.initWithFrame(none), nullptr);
    EXPECT_EQ(view.frame(), (Rect{-5, -5, 0, 0}));
}

TEST(ViewTest, SubviewsFollowTheirView) {
    View root;
    root.initWithFrame({7, 7, 800, 600});
    root.addSubview(std::make_unique<View>());
    View* const child = root.subviews()[0]->initWithFrame(root.bounds());
    child->addSubview(std::make_unique<View>());
    View* const grandchild = child->subviews()[0]->initWithFrame({-10, 0, 810, 610});
    auto* const window = reinterpret_cast<platform::Window*>(&root);  // only its address counts
    root.setWindow(window);
    EXPECT_EQ(grandchild->window(), window);
    root.setFrame({0, 0, 1000, 500});
    EXPECT_EQ(child->frame(), (Rect{0, 0, 1000, 500}));
    EXPECT_EQ(grandchild->frame(), (Rect{-10, 0, 1010, 510}));
}

TEST(NotificationCenterTest, TellsEveryObserverOfTheNameOnce) {
    int first = 0, second = 0;
    for (int time = 0; time < 2; ++time) NotificationCenter::addObserver(&first, "load", [&] { ++first; });
    NotificationCenter::addObserver(&second, "load", [&] { ++second; });
    NotificationCenter::addObserver(&second, "end", [&] { second = 0; });
    NotificationCenter::post("load");
    for (int* each : {&first, &second}) NotificationCenter::removeObserver(each);
    NotificationCenter::post("load");
    EXPECT_EQ(first, 1);
    EXPECT_EQ(second, 1);
}

TEST(NotificationCenterTest, LetsAHandlerChangeTheObservers) {
    int told = 0, late = 0;
    NotificationCenter::addObserver(&told, "load", [&] {
        NotificationCenter::addObserver(&late, "load", [&] { ++late; });
        NotificationCenter::removeObserver(&told);
        ++told;
    });
    for (int time = 0; time < 2; ++time) NotificationCenter::post("load");
    NotificationCenter::removeObserver(&late);
    EXPECT_EQ(told, 1);
    EXPECT_EQ(late, 1);
}

}  // namespace
