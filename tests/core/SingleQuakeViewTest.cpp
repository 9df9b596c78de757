#include "mappages/SingleQuakeView.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>

#include "platform/NotificationCenter.h"
#include "tests/standins/QuakeFeed.h"
#include "tests/standins/StandIns.h"
#include "tests/standins/URLLoading.h"
#include "tests/standins/WebView.h"

namespace {

using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::IsNull;
using ::testing::SizeIs;

void finishALoad() { platform::NotificationCenter::post(platform::WebViewProgressFinishedNotification); }

platform::WebView& webViewOf(const SingleQuakeView& view) {
    return dynamic_cast<platform::WebView&>(*view.subviews().at(0));
}

std::vector<platform::WebView::Backing::Load>& loadsOf(const SingleQuakeView& view) {
    return webViewOf(view).backing().loads;
}

class SingleQuakeViewTest : public standins::Test {
  protected:
    static std::unique_ptr<SingleQuakeView> makeView() {
        auto view = std::make_unique<SingleQuakeView>();
        EXPECT_EQ(view->initWithFrame({20, 30, 800, 600}), view.get());
        return view;
    }
};

TEST_F(SingleQuakeViewTest, HasNoWebViewUntilItLoads) {
    standins::serveQuakes({5});
    const auto view = makeView();
    EXPECT_THAT(standins::urlLoading().asked, SizeIs(1));
    EXPECT_FALSE(view->pageIsComplete());
    EXPECT_THAT(view->subviews(), IsEmpty());
}

TEST_F(SingleQuakeViewTest, IsNotMadeWithoutARectangle) {
    SingleQuakeView view;
    EXPECT_THAT(view.initWithFrame({0, 0, -1, 600}), IsNull());
    EXPECT_THAT(standins::urlLoading().asked, IsEmpty());
}

TEST_F(SingleQuakeViewTest, MakesAWebViewThatReachesPastItsLeftAndTopEdge) {
    standins::serveQuakes({5});
    const auto view = makeView();
    view->loadNextPage();
    view->loadNextPage();
    ASSERT_THAT(view->subviews(), SizeIs(1));
    platform::WebView& webView = webViewOf(*view);
    EXPECT_EQ(webView.frame(), (platform::Rect{-10, 0, 810, 610}));
    EXPECT_EQ(webView.backing().frameName, "mainFrame");
    EXPECT_EQ(webView.backing().groupName, "mainGroup");
    EXPECT_FALSE(webView.backing().allowsScrolling);
}

TEST_F(SingleQuakeViewTest, LoadsThePageOfTheNextQuake) {
    standins::serveQuakes({5, 6});
    const auto view = makeView();
    view->loadNextPage();
    view->loadNextPage();

    const auto& loads = loadsOf(*view);
    ASSERT_THAT(loads, SizeIs(2));
    EXPECT_EQ(loads[0].request.url, MapsPageWriter().locationOfTempPage());
    EXPECT_EQ(loads[0].request.cachePolicy, 0);
    EXPECT_EQ(loads[0].request.timeoutInterval, 0.0);
    EXPECT_THAT(loads[0].page, HasSubstr("initializeMap(1.000, 172.713, 6.00"));
    EXPECT_THAT(loads[0].page, HasSubstr("width: 810px; height: 610px"));
    EXPECT_THAT(loads[1].page, HasSubstr("initializeMap(0.000, 172.713, 5.00"));
}

TEST_F(SingleQuakeViewTest, IsCompleteWhenAnyWebViewHasFinished) {
    standins::serveQuakes({5, 6});
    const auto first = makeView();
    const auto second = makeView();
    first->loadNextPage();
    second->loadNextPage();
    EXPECT_FALSE(first->pageIsComplete());
    finishALoad();
    EXPECT_TRUE(first->pageIsComplete());
    EXPECT_TRUE(second->pageIsComplete());

    first->loadNextPage();
    EXPECT_FALSE(first->pageIsComplete());
    EXPECT_TRUE(second->pageIsComplete());
}

TEST_F(SingleQuakeViewTest, LoadsNothingWithoutAQuake) {
    const auto view = makeView();
    view->loadNextPage();
    EXPECT_THAT(loadsOf(*view), IsEmpty());
    EXPECT_FALSE(view->pageIsComplete());
    finishALoad();
    EXPECT_TRUE(view->pageIsComplete());
}

TEST_F(SingleQuakeViewTest, KeepsTheTenBiggestQuakes) {
    standins::serveQuakes({4, 5, 5, 5, 5, 5, 5, 5, 5, 5, 5, 4.1});
    const auto view = makeView();
    for (int i = 0; i < 11; ++i) view->loadNextPage();
    const auto& loads = loadsOf(*view);
    EXPECT_THAT(loads.front().page, HasSubstr("initializeMap(10.000"));
    EXPECT_THAT(loads[9].page, HasSubstr("initializeMap(1.000"));
    EXPECT_THAT(loads[10].page, HasSubstr("initializeMap(10.000"));
}

TEST_F(SingleQuakeViewTest, IsNotToldAnythingAfterItsEnd) {
    makeView()->loadNextPage();
    finishALoad();
}

}  // namespace
