#include "mappages/SingleQuakeView.h"

#include "tests/standins/StandIns.h"

namespace {

using testing::HasSubstr;

using SingleQuakeViewTest = standins::Test;

std::unique_ptr<SingleQuakeView> makeView() {
    auto view = std::make_unique<SingleQuakeView>();
    view->initWithFrame({20, 30, 800, 600});
    return view;
}

TEST_F(SingleQuakeViewTest, LoadsTheTenBiggestQuakesIntoOneWebView) {
    serveQuakes({4, 5, 5, 5, 5, 5, 5, 5, 5, 5, 6, 4.1});
    const auto view = makeView();
    for (int i = 0; i < 11; ++i) view->loadNextPage();

    ASSERT_EQ(view->subviews().size(), 1u);
    auto& webView = dynamic_cast<platform::WebView&>(*view->subviews()[0]);
    EXPECT_EQ(webView.frame(), (platform::Rect{-10, 0, 810, 610}));  // past left and top
    EXPECT_FALSE(webView.backing().allowsScrolling);
    const auto& loads = webView.backing().loads;
    EXPECT_EQ(loads.at(0).url, MapsPageWriter().locationOfTempPage());
    EXPECT_THAT(loads.at(0).page, HasSubstr("initializeMap(10.000, 172.713, 6.00"));
    EXPECT_THAT(loads.at(0).page, HasSubstr("width: 810px; height: 610px"));
    EXPECT_THAT(loads.at(10).page, HasSubstr("initializeMap(10.000"));
}

TEST_F(SingleQuakeViewTest, LoadsNothingWithoutAQuakeOrInAProcessThatStops) {
    const auto first = makeView(), second = makeView();
    first->loadNextPage();
    EXPECT_TRUE(dynamic_cast<platform::WebView&>(*first->subviews().at(0)).backing().loads.empty());
    standins::desktop.isStopping = true;
    second->loadNextPage();
    EXPECT_TRUE(second->subviews().empty());  // a new web view would delay the end
}

TEST_F(SingleQuakeViewTest, IsCompleteUntilItLoadsAgain) {
    const auto first = makeView(), second = makeView();
    for (const auto& each : {first.get(), second.get()}) each->loadNextPage();
    makeView()->loadNextPage();  // told nothing after its end
    EXPECT_FALSE(first->pageIsComplete());
    finishALoad();  // of any web view
    first->loadNextPage();
    EXPECT_FALSE(first->pageIsComplete());
    EXPECT_TRUE(second->pageIsComplete());
}

}  // namespace
