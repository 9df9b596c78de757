#include "platform/URLLoading.h"

#include <gio/gio.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <atomic>
#include <cstdlib>
#include <filesystem>

#include "platform/Files.h"
#include "platform/linux/system/FeedSubstitute.h"
#include "platform/linux/system/HttpTransfer.h"
#include "platform/linux/system/RunLoop.h"
#include "platform/linux/system/Trace.h"
#include "tests/TemporaryFolder.h"
#include "tests/support/LoopbackServer.h"

using namespace platform;

namespace {

constexpr std::size_t kTooMany = (64 << 20) + 1;

struct Load {
    bool had;
    std::string data;
    int errorCode;
};

Load load(const std::string& url) {
    Load result{false, "left over", 12345};
    result.had = loadResource(url, result.data, result.errorCode);
    return result;
}

void expectRefused(const std::string& url, int errorCode) {
    const Load result = load(url);
    EXPECT_FALSE(result.had) << url;
    EXPECT_EQ(result.errorCode, errorCode) << url;
    EXPECT_EQ(result.data, "") << url;
}

void expectHad(const std::string& url, const std::string& data) {
    const Load result = load(url);
    EXPECT_TRUE(result.had) << url << ": " << result.errorCode;
    EXPECT_EQ(result.errorCode, 0);
    EXPECT_TRUE(result.data == data) << result.data.size() << " bytes";
}

std::string manyEvents() {
    std::string document = "<quakeml>";
    for (int i = 0; i < 2000; ++i) document += "<event n='" + std::to_string(i) + "'/>";
    return document + "</quakeml>";
}

std::string gzipped(const std::string& text) {
    GConverter* const packer = G_CONVERTER(g_zlib_compressor_new(G_ZLIB_COMPRESSOR_FORMAT_GZIP, 9));
    std::string packed(text.size() + 100, '\0');
    gsize taken = 0, made = 0;
    g_converter_convert(packer, text.data(), text.size(), packed.data(), packed.size(),
                        G_CONVERTER_INPUT_AT_END, &taken, &made, nullptr);
    g_object_unref(packer);
    return packed.substr(0, made);
}

class URLLoadingTest : public testing::Test {
  protected:
    URLLoadingTest() { setenv("no_proxy", "*", true); }
    ~URLLoadingTest() override {
        setFeedSubstitute("");
        setVerbose(false);
    }

    // The URL of a file with that content.
    std::string fileWith(const std::string& name, const std::string& content) const {
        EXPECT_TRUE(writeFileAtomically(folder.path(name), content));
        return fileURLWithPath(folder.path(name));
    }

    LoopbackServer server;
    TemporaryFolder folder;
};

TEST_F(URLLoadingTest, ADocumentComesUnpackedAndTheServerSeesWhoAsks) {
    const std::string document = manyEvents();
    server.serve(document);
    expectHad(server.url("/query?minmagnitude=4&limit=100"), document);
    EXPECT_EQ(server.lastTarget(), "/query?minmagnitude=4&limit=100");
    EXPECT_EQ(server.lastHeader("Accept-Encoding"), "gzip");
    EXPECT_EQ(server.lastHeader("User-Agent").rfind("Tellmar/1.0.0 libcurl/", 0), 0u);
}

TEST_F(URLLoadingTest, PackedAnswersAreUnpackedAndDamagedOnesRefused) {
    const std::string document = manyEvents(), packed = gzipped(document);
    server.serveAsGzip(packed);
    expectHad(server.url(), document);

    std::string damaged = packed;
    for (std::size_t i = damaged.size() / 2; i < damaged.size() / 2 + 20; ++i) damaged[i] = '\x55';
    std::string wrongSum = packed;
    wrongSum[wrongSum.size() - 6] ^= 1;
    for (const std::string& bytes : {damaged, wrongSum, document}) {
        server.serveAsGzip(bytes);
        const Load result = load(server.url());
        EXPECT_FALSE(result.had);
        EXPECT_NE(result.errorCode, 0);
        EXPECT_EQ(result.data, "");
    }
}

TEST_F(URLLoadingTest, OnlyAWholeAnswerOfStatus200Counts) {
    for (const int status : {201, 204, 404, 500, 503}) {
        server.serveStatus(status, status == 204 ? "" : "<html>no</html>");
        expectRefused(server.url(), status);
    }
    server.serveStatus(200, "<html>yes</html>");
    expectHad(server.url(), "<html>yes</html>");
    server.serve("");
    expectHad(server.url(), "");
    server.cutOff(manyEvents());
    expectRefused(server.url(), CURLE_PARTIAL_FILE);
}

TEST_F(URLLoadingTest, AnAnswerMayHold64MiBAndNoMoreHoweverItComes) {
    server.serveBytes(kTooMany - 1, false);
    expectHad(server.url(), std::string(kTooMany - 1, 'x'));
    server.serveBytes(kTooMany, true);
    expectRefused(server.url(), CURLE_FILESIZE_EXCEEDED);
    server.serveBytes(kTooMany, false);
    expectRefused(server.url(), CURLE_FILESIZE_EXCEEDED);
    server.serveAsGzip(gzipped(std::string(kTooMany, 'x')));
    expectRefused(server.url(), CURLE_FILESIZE_EXCEEDED);
}

TEST_F(URLLoadingTest, RedirectsAreFollowedFiveTimesAndOnlyToTheWeb) {
    server.redirectTimes(5, "<there/>");
    expectHad(server.url(), "<there/>");
    server.redirectTimes(6, "<there/>");
    expectRefused(server.url(), CURLE_TOO_MANY_REDIRECTS);

    server.redirectTo("/");
    const int before = server.requestCount();
    expectRefused(server.url(), CURLE_TOO_MANY_REDIRECTS);
    EXPECT_EQ(server.requestCount() - before, 6);

    server.redirectTo(fileWith("secret", "secret"));
    expectRefused(server.url(), CURLE_UNSUPPORTED_PROTOCOL);
}

TEST_F(URLLoadingTest, ServersThatCannotBeReachedAreRefused) {
    const std::string deserted = LoopbackServer().url();
    expectRefused(deserted, CURLE_COULDNT_CONNECT);
    expectRefused("http://nothing.invalid/", CURLE_COULDNT_RESOLVE_HOST);
}

TEST_F(URLLoadingTest, AnAnswerThatDoesNotEndInTimeIsRefused) {
    const HttpLimits limits{.totalMilliseconds = 300};
    server.trickle();
    HttpTransfer endless(server.url(), limits);
    EXPECT_EQ(endless.run(), CURLE_OPERATION_TIMEDOUT);
    EXPECT_EQ(endless.body(), "");

    server.keepSilent();
    HttpTransfer silent(server.url(), limits);
    EXPECT_EQ(silent.run(), CURLE_OPERATION_TIMEDOUT);
}

TEST_F(URLLoadingTest, AStopOfTheMainLoopGivesTheLoadUp) {
    server.trickle();
    const auto stopWhileLoading = [this] {
        g_timeout_add(
            50, [](gpointer) -> gboolean { return RunLoop::stop(), G_SOURCE_REMOVE; }, nullptr);
        const Load interrupted = load(server.url());
        const Load late = load(server.url());
        const bool refused = !interrupted.had && interrupted.data.empty() && !late.had;
        _exit(refused ? interrupted.errorCode : 0);
    };
    // In a process of its own: a stop is for good.
    EXPECT_EXIT(stopWhileLoading(), testing::ExitedWithCode(CURLE_ABORTED_BY_CALLBACK), "");
}

TEST_F(URLLoadingTest, TheMainLoopGoesOnDuringALoad) {
    static std::atomic<int> ticks;
    ticks = 0;
    g_timeout_add(
        1, [](gpointer) -> gboolean { return ++ticks < 3; }, nullptr);
    server.answerWith([](const auto&, auto& response) {
        while (ticks < 3) std::this_thread::yield();
        response.set_content("<done/>", "application/xml");
    });
    expectHad(server.url(), "<done/>");
}

TEST_F(URLLoadingTest, AFileIsReadWholeUpToTheSameSize) {
    const std::string bytes("\0\r\n\xff<a/>", 8);
    expectHad(fileWith("a b%20\xc4\x81.xml", bytes), bytes);
    expectHad(fileWith("empty", ""), "");
    expectHad(fileWith("full", std::string(kTooMany - 1, 'f')), std::string(kTooMany - 1, 'f'));
    expectRefused(fileWith("large", std::string(kTooMany, 'f')), CURLE_FILESIZE_EXCEEDED);
    expectRefused(fileURLWithPath(folder.path()), CURLE_FILE_COULDNT_READ_FILE);
    expectRefused(fileURLWithPath(folder.path("missing")), CURLE_FILE_COULDNT_READ_FILE);
}

TEST_F(URLLoadingTest, OnlyWebAndFileURLsAreLoaded) {
    for (const char* url :
         {"", "127.0.0.1", "/etc/hostname", "ftp://127.0.0.1/x", "file://elsewhere/etc/hostname"})
        expectRefused(url, CURLE_UNSUPPORTED_PROTOCOL);
    EXPECT_FALSE(load("http://").had);
    server.serve("<a/>");
    expectHad("HTTP" + server.url().substr(4), "<a/>");
}

TEST_F(URLLoadingTest, ASubstituteAnswersForTheWebAlone) {
    const std::string other = fileWith("other", "other");
    const std::string feed = fileWith("feed", "feed");
    setFeedSubstitute(feed);
    expectHad("http://nothing.invalid/query", "feed");
    expectHad("https://nothing.invalid/query", "feed");
    expectHad(other, "other");

    server.serve("from the server");
    setFeedSubstitute(server.url("/feed"));
    expectHad("http://nothing.invalid/query", "from the server");
    EXPECT_EQ(server.lastTarget(), "/feed");
}

TEST_F(URLLoadingTest, TheTraceTellsWhatCameFromWhere) {
    setVerbose(true);
    testing::internal::CaptureStderr();
    server.serve("12345");
    load(server.url());
    server.serveStatus(404);
    load(server.url());
    const std::string feed = fileWith("feed", "feed");
    setFeedSubstitute(feed);
    load("http://nothing.invalid/q");
    EXPECT_EQ(testing::internal::GetCapturedStderr(),
              "tellmar: fetch " + server.url() + ": 5 bytes\n" +                          //
                  "tellmar: fetch " + server.url() + ": HTTP status 404 (error 404)\n" +  //
                  "tellmar: fetch http://nothing.invalid/q (answered by " + feed + "): 4 bytes\n");
}

TEST_F(URLLoadingTest, PathsBecomeFileURLsAndComeBack) {
    EXPECT_EQ(fileURLWithPath("/a b/100%#?\xc4\x81"), "file:///a%20b/100%25%23%3F%C4%81");
    EXPECT_EQ(pathOfFileURL(fileURLWithPath("/a b/100%#?\xc4\x81")), "/a b/100%#?\xc4\x81");
    EXPECT_EQ(pathOfFileURL("file://localhost/x"), "/x");
    EXPECT_EQ(pathOfFileURL(fileURLWithPath("x y")), (std::filesystem::current_path() / "x y").string());
    for (const char* url : {"", "/x", "http://localhost/x", "file://elsewhere/x", "file:///a%00b"})
        EXPECT_EQ(pathOfFileURL(url), "") << url;
}

TEST_F(URLLoadingTest, WritingGoesToFilesAlone) {
    int error = 12345;
    const std::string url = fileURLWithPath(folder.path("new file"));
    EXPECT_TRUE(writeResource(url, "new", error));
    EXPECT_EQ(error, 0);
    expectHad(url, "new");
    for (const std::string& bad :
         {fileURLWithPath(folder.path("no/such/folder")), server.url(), std::string()}) {
        error = 0;
        EXPECT_FALSE(writeResource(bad, "new", error)) << bad;
        EXPECT_NE(error, 0);
    }
    EXPECT_EQ(server.requestCount(), 0);
}

}  // namespace
