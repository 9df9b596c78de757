#include "platform/URLLoading.h"

#include <curl/curl.h>
#include <gio/gio.h>
#include <gmock/gmock.h>
#include <unistd.h>

#include <atomic>
#include <cstdlib>
#include <filesystem>

#include "platform/Files.h"
#include "platform/HTTPTransfer.h"
#include "platform/Log.h"
#include "platform/RunLoop.h"
#include "tests/TemporaryFolder.h"
#include "tests/support/Feed.h"
#include "tests/support/LoopbackServer.h"

using namespace platform;

namespace {

constexpr std::size_t kTooMany = (64 << 20) + 1;
const std::string kDocument = "<quakeml>" + repeated("<event/>", 2000) + "</quakeml>";

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

void expectRefused(const std::string& url, testing::Matcher<int> errorCode = testing::Ne(0)) {
    const Load result = load(url);
    EXPECT_FALSE(result.had) << url;
    EXPECT_THAT(result.errorCode, errorCode) << url;
    EXPECT_EQ(result.data, "") << url;
}

void expectHad(const std::string& url, const std::string& data) {
    const Load result = load(url);
    EXPECT_TRUE(result.had) << url << ": " << result.errorCode;
    EXPECT_EQ(result.errorCode, 0);
    EXPECT_TRUE(result.data == data) << result.data.size() << " bytes";
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
        setURLResponder({});
        setVerbose(false);
    }

    // The URL of a file with that content.
    static std::string fileWith(const std::string& name, const std::string& content) {
        EXPECT_TRUE(writeFileAtomically(name, content));
        return fileURLWithPath(name);
    }

    LoopbackServer server;
    TemporaryFolder currentFolder;
};

TEST_F(URLLoadingTest, ADocumentComesUnpackedAndTheServerSeesWhoAsks) {
    server.serve(kDocument);
    expectHad("HTTP" + server.url("/query?minmagnitude=4&limit=100").substr(4), kDocument);
    EXPECT_EQ(server.lastTarget(), "/query?minmagnitude=4&limit=100");
    EXPECT_EQ(server.lastHeader("Accept-Encoding"), "gzip");
    EXPECT_THAT(server.lastHeader("User-Agent"), testing::StartsWith("Tellmar/1.0.0 libcurl/"));
}

TEST_F(URLLoadingTest, OnlyAWholeAnswerOfStatus200Counts) {
    for (const int status : {201, 204, 404, 503}) {
        server.serveStatus(status, status == 204 ? "" : "<html>no</html>");
        expectRefused(server.url(), status);
    }
    for (const char* document : {"<html>yes</html>", ""}) {
        server.serve(document);
        expectHad(server.url(), document);
    }
    server.cutOff(kDocument);
    expectRefused(server.url(), CURLE_PARTIAL_FILE);

    std::string damaged = gzipped(kDocument), wrongSum = damaged;
    damaged.replace(damaged.size() / 2, 20, 20, '\x55');
    wrongSum[wrongSum.size() - 6] ^= 1;
    for (const std::string& bytes : {damaged, wrongSum, kDocument}) {
        server.serveAsGzip(bytes);
        expectRefused(server.url());
    }
}

TEST_F(URLLoadingTest, AnAnswerMayHold64MiBAndNoMoreHoweverItComes) {
    server.serveBytes(kTooMany - 1, false);
    expectHad(server.url(), std::string(kTooMany - 1, 'x'));
    for (const bool isAnnounced : {true, false}) {
        server.serveBytes(kTooMany, isAnnounced);
        expectRefused(server.url(), CURLE_FILESIZE_EXCEEDED);
    }
    server.serveAsGzip(gzipped(std::string(kTooMany, 'x')));
    expectRefused(server.url(), CURLE_FILESIZE_EXCEEDED);
}

TEST_F(URLLoadingTest, RedirectsAreFollowedFiveTimesAndOnlyToTheWeb) {
    server.serveAfter(std::vector<int>(5, 302), "<there/>");
    expectHad(server.url(), "<there/>");
    const int before = server.requestCount();
    server.redirectTo("/");
    expectRefused(server.url(), CURLE_TOO_MANY_REDIRECTS);
    EXPECT_EQ(server.requestCount() - before, 6);
    server.redirectTo(fileWith("secret", "secret"));
    expectRefused(server.url(), CURLE_UNSUPPORTED_PROTOCOL);
}

TEST_F(URLLoadingTest, WhatCannotBeReachedInTimeIsRefused) {
    const std::string deserted = LoopbackServer().url();
    expectRefused(deserted, CURLE_COULDNT_CONNECT);
    expectRefused("http://nothing.invalid/", CURLE_COULDNT_RESOLVE_HOST);
    for (const bool answers : {true, false}) {
        answers ? server.trickle() : server.keepSilent();
        const HTTPResponse response = get({.url = server.url(), .maxMilliseconds = 300});
        EXPECT_EQ(response.errorCode, CURLE_OPERATION_TIMEDOUT);
        EXPECT_EQ(response.body, "");
    }
}

TEST_F(URLLoadingTest, AStopOfTheMainLoopGivesTheLoadUp) {
    server.trickle();
    const auto stopWhileLoading = [this] {
        g_timeout_add(
            50, [](gpointer) -> gboolean { return RunLoop::stop(), G_SOURCE_REMOVE; }, nullptr);
        const Load interrupted = load(server.url()), late = load(server.url());
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
    expectHad(fileWith("full", std::string(kTooMany - 1, 'f')), std::string(kTooMany - 1, 'f'));
    expectRefused(fileWith("large", std::string(kTooMany, 'f')), CURLE_FILESIZE_EXCEEDED);
    for (const char* path : {".", "missing"})
        expectRefused(fileURLWithPath(path), CURLE_FILE_COULDNT_READ_FILE);
    for (const char* url :
         {"", "127.0.0.1", "/etc/hostname", "ftp://127.0.0.1/x", "file://elsewhere/etc/hostname"})
        expectRefused(url, CURLE_UNSUPPORTED_PROTOCOL);
    expectRefused("http://");
}

TEST_F(URLLoadingTest, AResponderAnswersBeforeTheNetworkAndTheTraceTellsWhatCameFromWhere) {
    const std::string other = fileWith("other", "other");
    server.serve("12345");
    setVerbose(true);
    testing::internal::CaptureStderr();
    expectHad(server.url(), "12345");
    server.serveStatus(404);
    expectRefused(server.url());
    setURLResponder([](const std::string& url, std::string& data) -> std::optional<LoadOutcome> {
        if (url != "https://nothing.invalid/q") return std::nullopt;
        data = "made up";
        return LoadOutcome{.source = "the responder"};
    });
    expectHad("https://nothing.invalid/q", "made up");
    expectHad(other, "other");
    EXPECT_EQ(testing::internal::GetCapturedStderr(),
              "tellmar: fetch " + server.url() + ": 5 bytes\n" +                                       //
                  "tellmar: fetch " + server.url() + ": HTTP status 404 (error 404)\n" +               //
                  "tellmar: fetch https://nothing.invalid/q (answered by the responder): 7 bytes\n" +  //
                  "tellmar: fetch " + other + ": 5 bytes\n");
}

TEST_F(URLLoadingTest, AResponseTellsItsHeadersAndAComplaintItsFirstLine) {
    server.answerWith([](const auto& request, auto& response) {
        response.status = 503;
        response.set_header("Retry-After", "2");
        response.set_header("ETag", request.get_header_value("If-None-Match"));
        response.set_content("too \x1b[1mbusy\nUsage details are available", "text/plain");
    });
    const HTTPResponse response = get({.url = server.url(), .headers = {{"If-None-Match", "\"one\""}}});
    EXPECT_EQ(response.status, 503);
    EXPECT_EQ(response.retryAfterSeconds, 2);
    EXPECT_EQ(response.header("etag"), "\"one\"");
    EXPECT_EQ(response.header("Last-Modified"), "");
    EXPECT_EQ(response.complaint, "too  [1mbusy");
}

TEST_F(URLLoadingTest, ASinkTakesMoreThanABodyMayHoldAndCanRefuse) {
    server.serve(std::string(kTooMany, ' '));  // as a text type, and so packed
    std::size_t taken = 0;
    const auto count = [&](std::string_view bytes) { return (taken += bytes.size()) > 0; };
    EXPECT_EQ(get({.url = server.url(), .maxBytes = 2 * kTooMany, .sink = count}).errorCode, 0);
    EXPECT_EQ(taken, kTooMany);
    EXPECT_EQ(get({.url = server.url(), .sink = count}).errorCode, CURLE_FILESIZE_EXCEEDED);
    EXPECT_EQ(get({.url = server.url(), .sink = [](auto) { return false; }}).errorCode,
              coreFoundationUnknownErr);
}

TEST_F(URLLoadingTest, ABodyThatUnpacksForLongHearsTheDeadlineAndTheStop) {
    constexpr std::size_t kUnpacked = 8 << 20;
    server.serveAsGzip(gzipped(std::string(kUnpacked, ' ')));
    const auto loadSlowly = [&](int milliseconds) {
        std::size_t taken = 0;
        const auto slowly = [&](std::string_view bytes) {
            usleep(2000);
            return (taken += bytes.size()) > 0;
        };
        const int code =
            get({.url = server.url(), .maxMilliseconds = milliseconds, .sink = slowly}).errorCode;
        return taken < kUnpacked ? code : 0;
    };
    EXPECT_EQ(loadSlowly(100), CURLE_OPERATION_TIMEDOUT);
    const auto stopWhileLoading = [&] {
        g_timeout_add(
            100, [](gpointer) -> gboolean { return RunLoop::stop(), G_SOURCE_REMOVE; }, nullptr);
        _exit(loadSlowly(30'000));
    };
    EXPECT_EXIT(stopWhileLoading(), testing::ExitedWithCode(CURLE_ABORTED_BY_CALLBACK), "");
}

TEST_F(URLLoadingTest, PathsBecomeFileURLsAndComeBack) {
    EXPECT_EQ(fileURLWithPath("/a b/100%#?\xc4\x81"), "file:///a%20b/100%25%23%3F%C4%81");
    EXPECT_EQ(pathOfFileURL(fileURLWithPath("/a b/100%#?\xc4\x81")), "/a b/100%#?\xc4\x81");
    EXPECT_EQ(pathOfFileURL("file://localhost/x"), "/x");
    EXPECT_EQ(pathOfFileURL(fileURLWithPath("x y")), currentFolder.path("x y"));
    for (const char* url : {"", "/x", "http://localhost/x", "file://elsewhere/x", "file:///a%00b"})
        EXPECT_EQ(pathOfFileURL(url), "") << url;
}

TEST_F(URLLoadingTest, WritingGoesToFilesAlone) {
    int error = 12345;
    EXPECT_TRUE(writeResource(fileURLWithPath("new file"), "new", error));
    EXPECT_EQ(error, 0);
    EXPECT_EQ(contentsOf("new file"), "new");
    EXPECT_FALSE(writeResource(server.url(), "new", error));
    EXPECT_NE(error, 0);
}

}  // namespace
