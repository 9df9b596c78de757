#include <gio/gio.h>
#include <gtest/gtest.h>
#include <webkit2/webkit2.h>

#include <fstream>
#include <string>

#include "platform/RunLoop.h"
#include "platform/WebView.h"
#include "platform/linux/Handles.h"
#include "tests/TemporaryFolder.h"
#include "tests/map/MapPage.h"

namespace {

std::string promise(const std::string& script) {
    return "tellmarPicture = new Promise((done, fail) => { " + script + " }); document.title = 'waits'";
}

const std::string kRed = "document.body.style.background = 'red'; ";
const std::string kRedLater = promise("setTimeout(() => { " + kRed + "done(); }, 300)");

class PageLoadTest : public testing::Test {
  protected:
    // A page whose onload runs that.
    std::string pageThat(const std::string& script) {
        const std::string path = mFolder.path(std::to_string(++mPages) + ".html");
        std::ofstream(path) << "<!DOCTYPE html><body onload=\"" << script << "\">";
        return path;
    }
    bool isRed() const { return mPage.picture().at(100, 100).red == 255; }

    const TemporaryFolder mFolder;
    int mPages = 0;
    MapPage mPage{{320, 240}};
};

TEST_F(PageLoadTest, ALoadIsReportedOnceThePromisedPictureIsThereHoweverThePromiseGoes) {
    for (const std::string& script : {kRedLater, kRed, kRed + promise(""), kRed + promise("fail();"),
                                      kRed + "tellmarPicture = 5", kRed + "requestAnimationFrame = 0"}) {
        EXPECT_TRUE(mPage.load(pageThat(script))) << script;
        EXPECT_TRUE(isRed()) << script;
        EXPECT_EQ(mPage.loads(), mPages) << script;
        mPage.evaluate("document.body.style.background = 'blue'");
    }
}

TEST_F(PageLoadTest, APageOpensNoConnection) {
    const platform::ObjectRef<GSocketService> listener(g_socket_service_new());
    const auto port =
        g_socket_listener_add_any_inet_port(G_SOCKET_LISTENER(listener.get()), nullptr, nullptr);
    int connections = 0;
    g_signal_connect_swapped(listener.get(), "incoming",
                             G_CALLBACK(+[](int* count) -> gboolean { return ++*count; }), &connections);
    const std::string url = "http://127.0.0.1:" + std::to_string(port) + "/";
    std::string links;
    for (const std::string kind :
         {"preconnect", "dns-prefetch", "prefetch", "preload", "prerender", "stylesheet"})
        links += "<link rel='" + kind + "' href='" + url + "' as='script'>";
    const std::string path =
        pageThat("fetch('" + url + "').catch(() => {}); navigator.sendBeacon('" + url + "')");
    std::ofstream(path, std::ios::app) << links << "<img src='" << url << "'>";
    ASSERT_TRUE(mPage.load(path));
    ASSERT_TRUE(mPage.load(pageThat(kRedLater)));
    EXPECT_EQ(connections, 0);
}

TEST_F(PageLoadTest, ANewerLoadTakesThePlaceOfOneThatIsWaitedFor) {
    mPage.view().loadRequest({.url = pageThat(promise(""))});
    ASSERT_TRUE(mPage.waitFor("document.title === 'waits'"));
    ASSERT_TRUE(mPage.load(pageThat(kRedLater)));
    EXPECT_TRUE(isRed());
}

TEST_F(PageLoadTest, APageLeadsTheViewNowhereNotEvenToItsOwnAddress) {
    const std::string path = pageThat(kRed);
    ASSERT_TRUE(mPage.load(path));
    std::ofstream(path) << "<!DOCTYPE html><title>another view's page</title>";
    for (const std::string way :
         {"location.reload()", "location = location.href", "location = 'about:blank'"}) {
        mPage.evaluate(way + ", setTimeout(() => document.title = 'stays', 200)");
        EXPECT_TRUE(mPage.waitFor("document.title === 'stays'")) << way;
        mPage.evaluate("document.title = ''");
    }
}

TEST_F(PageLoadTest, APageThatLosesItsProcessIsLoadedThreeTimesMoreAndThenReported) {
    mPage.view().loadRequest({.url = pageThat(promise(""))});
    for (int loss = 1; loss <= 4; ++loss) {
        EXPECT_EQ(mPage.loads(), 0) << loss;
        ASSERT_TRUE(mPage.waitFor("document.title === 'waits'")) << loss;
        webkit_web_view_terminate_web_process(mPage.web());
    }
    ASSERT_TRUE(platform::RunLoop::runUntil([this] { return mPage.loads() == 1; }, 4000));
    EXPECT_TRUE(mPage.load(pageThat(kRed)));
    EXPECT_TRUE(isRed());
}

}  // namespace
