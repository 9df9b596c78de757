#include "mappages/SingleQuakeView.h"

#include "tests/standins/StandIns.h"

namespace {

using testing::HasSubstr, testing::IsEmpty;

class SingleQuakeViewTest : public standins::Test {
  protected:
    static std::unique_ptr<SingleQuakeView> makeView() {
        auto view = std::make_unique<SingleQuakeView>();
        EXPECT_EQ(view->initWithFrame({20, 30, 800, 600}), view.get());
        return view;
    }
    static platform::WebView& webViewOf(const SingleQuakeView& view) {
        EXPECT_EQ(view.subviews().size(), 1u);
        return dynamic_cast<platform::WebView&>(*view.subviews().at(0));
    }
};

TEST_F(SingleQuakeViewTest, LoadsTheTenBiggestQuakesIntoOneWebViewThatReachesPastLeftAndTop) {
    serveQuakes({4, 5, 5, 5, 5, 5, 5, 5, 5, 5, 6, 4.1});
    const auto view = makeView();
    EXPECT_THAT(view->subviews(), IsEmpty());
    for (int i = 0; i < 11; ++i) view->loadNextPage();

    EXPECT_EQ(webViewOf(*view).frame(), (platform::Rect{-10, 0, 810, 610}));
    EXPECT_FALSE(webViewOf(*view).backing().allowsScrolling);
    const auto& loads = webViewOf(*view).backing().loads;
    EXPECT_EQ(loads.at(0).url, MapsPageWriter().locationOfTempPage());
    EXPECT_THAT(loads.at(0).page, HasSubstr("initializeMap(10.000, 172.713, 6.00"));
    EXPECT_THAT(loads.at(0).page, HasSubstr("width: 810px; height: 610px"));
    EXPECT_THAT(loads.at(9).page, HasSubstr("initializeMap(1.000, 172.713, 5.00"));
    EXPECT_THAT(loads.at(10).page, HasSubstr("initializeMap(10.000"));
}

TEST_F(SingleQuakeViewTest, ADyingProcessMakesNoWebView) {
    serveQuakes({5});
    const auto view = makeView();
    standins::desktop.isStopping = true;
    view->loadNextPage();
    EXPECT_THAT(view->subviews(), IsEmpty());
}

TEST_F(SingleQuakeViewTest, IsCompleteWhenAnyWebViewHasFinishedUntilItLoadsAgain) {
    const auto first = makeView(), second = makeView();
    first->loadNextPage();
    second->loadNextPage();
    makeView()->loadNextPage();                                 // told nothing after its end
    EXPECT_THAT(webViewOf(*first).backing().loads, IsEmpty());  // no quake
    EXPECT_FALSE(first->pageIsComplete());
    finishALoad();
    first->loadNextPage();
    EXPECT_FALSE(first->pageIsComplete());
    EXPECT_TRUE(second->pageIsComplete());
}

}  // namespace
