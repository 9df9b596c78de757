#include "platform/URLLoading.h"

#include <curl/curl.h>
#include <gmock/gmock.h>
#include <unistd.h>

#include <cstdlib>

#include "platform/Files.h"
#include "platform/HTTPTransfer.h"
#include "platform/Log.h"
#include "platform/RunLoop.h"
#include "platform/Timer.h"
#include "tests/TemporaryFolder.h"
#include "tests/support/Feed.h"
#include "tests/system/LoopbackServer.h"

using namespace platform;

namespace {

// An error code and the data.
using Answer = std::pair<int, std::string>;

constexpr std::size_t kMost = 64 << 20;
const std::string kDocument = "<quakeml>" + repeated("<event/>", 2000) + "</quakeml>";

Answer load(const std::string& url) {
    std::string data = "left over";
    int errorCode = 12345;
    const bool isLoaded = loadResource(url, data, errorCode);
    EXPECT_EQ(isLoaded, errorCode == 0) << url;
    return {errorCode, data};
}

// The URL of a file with that content.
std::string fileWith(const std::string& name, const std::string& content) {
    EXPECT_TRUE(writeFileAtomically(name, content));
    return fileURLWithPath(name);
}

class URLLoadingTest : public testing::Test {
  protected:
    URLLoadingTest() { setenv("no_proxy", "*", true); }

    void serveBytes(std::size_t count) {
        server.serveChunks([=](std::size_t offset, httplib::DataSink& sink) {
            static const std::string block(1 << 16, 'x');
            if (offset < count) return sink.write(block.data(), std::min(block.size(), count - offset));
            sink.done();
            return true;
        });
    }
    // A few bytes now and then, for ever.
    void trickle() {
        server.serveChunks([](std::size_t, httplib::DataSink& sink) {
            usleep(5000);
            return sink.write("<a>", 3);
        });
    }
    void redirectTo(const std::string& url) {
        server.answer = [=](const auto&, auto& response) { response.set_redirect(url); };
    }

    LoopbackServer server;
    const TemporaryFolder currentFolder;
};

TEST_F(URLLoadingTest, OnlyAWholeAnswerOfStatus200Counts) {
    for (const int status : {200, 201, 404}) {
        server.serve(status == 200 ? "" : "<html>no</html>", status);
        EXPECT_EQ(load(server.url()), Answer(status == 200 ? 0 : status, ""));
    }
}

TEST_F(URLLoadingTest, TheServerSeesWhoAsks) {
    server.serve(kDocument);
    EXPECT_EQ(load("HTTP" + server.url("/query?minmagnitude=4&limit=100").substr(4)), Answer(0, kDocument));
    EXPECT_EQ(server.lastRequest.target, "/query?minmagnitude=4&limit=100");
    EXPECT_EQ(server.lastRequest.get_header_value("Accept-Encoding"), "gzip");
    EXPECT_THAT(server.lastRequest.get_header_value("User-Agent"),
                testing::StartsWith("Tellmar/1.0.0 libcurl/"));
}

TEST_F(URLLoadingTest, AnAnswerMayHold64MiB) {
    serveBytes(kMost);
    EXPECT_TRUE(load(server.url()) == Answer(0, std::string(kMost, 'x')));
    serveBytes(kMost + 1);
    EXPECT_EQ(load(server.url()).first, CURLE_FILESIZE_EXCEEDED);
    server.serve(std::string(kMost + 1, 'x'));  // packed
    EXPECT_EQ(load(server.url()).first, CURLE_FILESIZE_EXCEEDED);
}

TEST_F(URLLoadingTest, RedirectsAreFollowedFiveTimes) {
    server.answer = [redirects = 0](const auto&, auto& response) mutable {
        if (++redirects <= 5) return response.set_redirect("/");
        response.set_content("<there/>", "application/xml");
    };
    EXPECT_EQ(load(server.url()), Answer(0, "<there/>"));
    redirectTo("/");
    EXPECT_EQ(load(server.url()), Answer(CURLE_TOO_MANY_REDIRECTS, ""));
    const std::string file = fileWith("secret", "secret");
    redirectTo(file);
    EXPECT_EQ(load(server.url()), Answer(CURLE_UNSUPPORTED_PROTOCOL, ""));
    EXPECT_EQ(get({.url = file}).errorCode, CURLE_UNSUPPORTED_PROTOCOL);
}

TEST_F(URLLoadingTest, WhatCannotBeReachedInTimeIsRefused) {
    const std::string deserted = LoopbackServer().url();
    EXPECT_EQ(load(deserted), Answer(CURLE_COULDNT_CONNECT, ""));
    trickle();
    const HTTPResponse response = get({.url = server.url(), .maxMilliseconds = 50});
    EXPECT_EQ(response.errorCode, CURLE_OPERATION_TIMEDOUT);
    EXPECT_EQ(response.body, "");
}

TEST_F(URLLoadingTest, AFileIsReadUpToTheSameSize) {
    const std::string bytes("\0\r\n\xff<a/>", 8);
    EXPECT_EQ(load(fileWith("a b%20\xc4\x81.xml", bytes)), Answer(0, bytes));
    const std::string large = fileWith("large", "");
    std::filesystem::resize_file("large", kMost);  // takes no room on the disk
    EXPECT_TRUE(load(large) == Answer(0, std::string(kMost, '\0')));
    std::filesystem::resize_file("large", kMost + 1);
    EXPECT_EQ(load(large).first, CURLE_FILESIZE_EXCEEDED);
    EXPECT_EQ(load(fileURLWithPath(".")), Answer(CURLE_FILE_COULDNT_READ_FILE, ""));
    for (const char* url : {"", "127.0.0.1", "/etc/hostname", "ftp://127.0.0.1/x", "file://elsewhere/x"})
        EXPECT_EQ(load(url), Answer(CURLE_UNSUPPORTED_PROTOCOL, ""));
}

TEST_F(URLLoadingTest, AResponderAnswersBeforeTheNetwork) {
    const std::string other = fileWith("other", "other");
    setURLResponder([](const std::string& url, std::string& data) -> std::optional<LoadOutcome> {
        if (url != "https://nothing.invalid/q") return std::nullopt;
        data = "made up";
        return LoadOutcome{.source = "the responder"};
    });
    setVerbose(true);
    testing::internal::CaptureStderr();
    load(server.url());
    EXPECT_EQ(load("https://nothing.invalid/q"), Answer(0, "made up"));
    EXPECT_EQ(load(other), Answer(0, "other"));
    EXPECT_EQ(testing::internal::GetCapturedStderr(),
              "tellmar: fetch " + server.url() + ": HTTP status 404 (error 404)\n" +
                  "tellmar: fetch https://nothing.invalid/q (answered by the responder): 7 bytes\n" +
                  "tellmar: fetch " + other + ": 5 bytes\n");
    setURLResponder({});
    setVerbose(false);
}

TEST_F(URLLoadingTest, AResponseHasItsHeadersAndTheFirstLineOfAComplaint) {
    server.answer = [](const auto& request, auto& response) {
        response.status = 503;
        response.set_header("Retry-After", "2");
        response.set_header("ETag", request.get_header_value("If-None-Match"));
        response.set_content("too \x1b[1mbusy\nUsage details are available", "text/plain");
    };
    const HTTPResponse response = get({.url = server.url(), .headers = {{"If-None-Match", "\"one\""}}});
    EXPECT_EQ(response.status, 503);
    EXPECT_EQ(response.retryAfterSeconds, 2);
    EXPECT_EQ(response.header("etag"), "\"one\"");
    EXPECT_EQ(response.complaint, "too  [1mbusy");
}

TEST_F(URLLoadingTest, TheDeadlineAndTheStopCountWhileABodyUnpacks) {
    constexpr std::size_t kUnpacked = 8 << 20;
    server.serve(std::string(kUnpacked, ' '));  // as a text type, and so packed
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
    EXPECT_EQ(loadSlowly(50), CURLE_OPERATION_TIMEDOUT);
    const auto stopWhileLoading = [&] {
        const Timer stop(50, RunLoop::stop);
        _exit(loadSlowly(30'000));
    };
    EXPECT_EXIT(stopWhileLoading(), testing::ExitedWithCode(CURLE_ABORTED_BY_CALLBACK), "");
}

TEST_F(URLLoadingTest, PathsBecomeFileURLs) {
    EXPECT_EQ(fileURLWithPath("/a b/100%#?\xc4\x81"), "file:///a%20b/100%25%23%3F%C4%81");
    EXPECT_EQ(pathOfFileURL("file://localhost/a%20b/100%25%23%3F%C4%81"), "/a b/100%#?\xc4\x81");
    EXPECT_EQ(pathOfFileURL(fileURLWithPath("x y")), currentFolder.path("x y"));
    for (const char* url : {"", "/x", "http://localhost/x", "file://elsewhere/x", "file:///a%00b"})
        EXPECT_EQ(pathOfFileURL(url), "") << url;
}

TEST_F(URLLoadingTest, OnlyFilesAreWritten) {
    int error = 0;
    EXPECT_FALSE(writeResource(server.url(), "new", error));
    EXPECT_NE(error, 0);
}

}  // namespace
