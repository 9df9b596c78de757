#include "platform/linux/system/EventService.h"

#include <glib.h>
#include <gtest/gtest.h>

#include <unistd.h>

#include <atomic>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <memory>

#include "platform/Files.h"
#include "platform/URLLoading.h"
#include "platform/linux/system/AnswerCache.h"
#include "platform/linux/system/FeedSubstitute.h"
#include "platform/linux/system/RunLoop.h"
#include "platform/linux/system/Trace.h"
#include "service/EventAnswer.h"
#include "tests/TemporaryFolder.h"
#include "tests/support/LoopbackServer.h"

using namespace platform;

namespace {

constexpr char kQuery[] =
    "http://magma.geonet.org.nz/services/quake/quakeml/1.0.1/query?"
    "startDate=2026-11-13&endDate=2026-11-21&magnitudeLower=4&magnitudeUpper=10&outputFormat=quakeml1.0";
constexpr std::time_t kMinute = 60, kDay = 24 * 60 * kMinute;

std::string today(const std::string& type) {
    return "<q:quakeml xmlns:q='http://quakeml.org/xmlns/quakeml/1.2' "
           "xmlns='http://quakeml.org/xmlns/bed/1.2'>"
           "<eventParameters><event><pick/><type>" +
           type + "</type></event></eventParameters></q:quakeml>";
}

std::string translated(const std::string& type) {
    EventAnswer answer;
    answer.take(today(type));
    answer.finish();
    return std::move(answer).document();
}

class EventServiceTest : public testing::Test {
  protected:
    EventServiceTest() {
        setenv("no_proxy", "*", true);
        setenv("XDG_CACHE_HOME", folder.path().c_str(), true);
        setEventService(server.url());
        setAnswersKept(true);
    }
    ~EventServiceTest() override {
        setFeedSubstitute("");
        setVerbose(false);
        unsetenv("XDG_CACHE_HOME");
    }

    // What the quake list gets; empty when the load failed.
    static std::string load() {
        std::string data = "left over";
        int errorCode = -1;
        const bool isHad = loadResource(kQuery, data, errorCode);
        EXPECT_EQ(isHad, errorCode == 0);
        return data;
    }

    // Makes the answers kept so far older, with the document as it is.
    void age(std::time_t seconds) const {
        const AnswerCache cache(AnswerCache::userFolder());
        auto answer = cache.newest(server.url());
        ASSERT_TRUE(answer);
        answer->time -= seconds;
        ASSERT_TRUE(cache.store(*answer));
    }

    // Serves the statuses one after the other, then the document.
    void answerAfter(std::vector<int> statuses, const std::string& document) {
        const auto count = std::make_shared<std::atomic<std::size_t>>(0);
        server.answerWith([=](const auto&, auto& response) {
            const std::size_t number = (*count)++;
            if (number < statuses.size())
                response.status = statuses[number];
            else
                response.set_content(document, "application/xml");
        });
    }

    std::size_t filesKept() const {
        std::error_code error;
        const std::filesystem::directory_iterator files(AnswerCache::userFolder(), error);
        return static_cast<std::size_t>(std::distance(begin(files), end(files)));
    }

    TemporaryFolder folder;
    LoopbackServer server;
};

TEST_F(EventServiceTest, TheListsQueryIsAnsweredByTheService) {
    server.serve(today("earthquake"));
    EXPECT_EQ(load(), translated("earthquake"));
    EXPECT_EQ(server.lastTarget().rfind("/fdsnws/event/1/query?starttime=", 0), 0u) << server.lastTarget();
    EXPECT_EQ(server.lastHeader("Accept-Encoding"), "gzip");
    EXPECT_FALSE(answerIsAsOf());
}

TEST_F(EventServiceTest, AnAnswerOf2009IsUnchangedAndNoContentIsNoQuakes) {
    setAnswersKept(false);
    const std::string earlier = "<quakeml xmlns='http://quakeml.org/xmlns/quakeml/1.0'> <a/></quakeml>";
    server.serve(earlier);
    EXPECT_EQ(load(), earlier);
    server.serveStatus(204);
    EXPECT_EQ(load(), EventAnswer::withoutEvents());
}

TEST_F(EventServiceTest, WhatIsNoWholeAnswerIsNothing) {
    setAnswersKept(false);
    server.serve("<html><body>Please log in</body></html>", "text/html");
    EXPECT_EQ(load(), "");
    server.serve(today("earthquake").substr(0, today("earthquake").size() - 3));
    EXPECT_EQ(load(), "");
    server.cutOff(today("earthquake"));
    EXPECT_EQ(load(), "");
    server.serve("");
    EXPECT_EQ(load(), "");
    for (const int status : {304, 400, 404, 413}) {
        const int before = server.requestCount();
        server.serveStatus(status);
        EXPECT_EQ(load(), "") << status;
        EXPECT_EQ(server.requestCount() - before, 1) << status;
    }
}

TEST_F(EventServiceTest, ABusyServiceIsAskedOnceMore) {
    setAnswersKept(false);
    for (const int status : {429, 503}) {
        answerAfter({status}, today("earthquake"));
        EXPECT_EQ(load(), translated("earthquake")) << status;
    }
    answerAfter({503, 503}, today("earthquake"));
    const int before = server.requestCount();
    EXPECT_EQ(load(), "");
    EXPECT_EQ(server.requestCount() - before, 2);
}

TEST_F(EventServiceTest, AStopEndsThePauseBeforeTheSecondRequest) {
    server.answerWith([](const auto&, auto& response) {
        response.status = 429;
        response.set_header("Retry-After", "100");
    });
    const auto loadAndLeave = [] {
        g_timeout_add(
            300, [](gpointer) -> gboolean { return RunLoop::stop(), G_SOURCE_REMOVE; }, nullptr);
        _exit(load().empty() ? 3 : 4);
    };
    // In a process of its own: a stop is for good.
    EXPECT_EXIT(loadAndLeave(), testing::ExitedWithCode(3), "");
    EXPECT_EQ(server.requestCount(), 1);
}

TEST_F(EventServiceTest, APackedAnswerMayUnpackToMoreThanAPlainOneMayHold) {
    const std::string whole = today("earthquake");
    const std::string pick = "<pick/>" + std::string(1 << 20, ' ');
    std::string large = whole;
    large.insert(large.find("<pick/>"), [&] {
        std::string picks;
        while (picks.size() < static_cast<std::size_t>(kMaxResourceBytes)) picks += pick;
        return picks;
    }());
    server.serve(large);  // as a text type, and so packed
    EXPECT_EQ(load(), translated("earthquake"));
}

TEST_F(EventServiceTest, TheServicesComplaintIsTraced) {
    setAnswersKept(false);
    setVerbose(true);
    server.serveStatus(400, "unknown parameter: \x1b[1mlimit\nUsage details are available", "text/plain");
    testing::internal::CaptureStderr();
    load();
    const std::string lines = testing::internal::GetCapturedStderr();
    EXPECT_NE(lines.find("tellmar: the service says: unknown parameter:  [1mlimit\n"), lines.npos) << lines;
    EXPECT_NE(lines.find("HTTP status 400"), lines.npos) << lines;
    EXPECT_EQ(lines.find("Usage"), lines.npos) << lines;
}

TEST_F(EventServiceTest, AYoungAnswerIsUsedAgain) {
    server.serve(today("earthquake"));
    load();
    age(4 * kMinute);
    server.serve(today("other event"));
    EXPECT_EQ(load(), translated("earthquake"));
    EXPECT_EQ(server.requestCount(), 1);
    EXPECT_FALSE(answerIsAsOf());

    age(kMinute);
    EXPECT_EQ(load(), translated("other event"));
    EXPECT_EQ(server.requestCount(), 2);
    age(-kDay);  // by a clock that was ahead
    load();
    EXPECT_EQ(server.requestCount(), 3);
}

TEST_F(EventServiceTest, AnOlderAnswerIsAskedForOnCondition) {
    server.answerWith([](const auto& request, auto& response) {
        response.set_header("ETag", "\"one\"");
        response.set_header("Last-Modified", "Sat, 21 Nov 2026 01:02:03 GMT");
        if (request.has_header("If-None-Match"))
            response.status = 304;
        else
            response.set_content(today("earthquake"), "application/xml");
    });
    load();
    EXPECT_EQ(server.lastHeader("If-None-Match"), "");
    age(6 * kMinute);
    EXPECT_EQ(load(), translated("earthquake"));
    EXPECT_EQ(server.lastHeader("If-None-Match"), "\"one\"");
    EXPECT_EQ(server.lastHeader("If-Modified-Since"), "Sat, 21 Nov 2026 01:02:03 GMT");
    EXPECT_FALSE(answerIsAsOf());

    load();  // the answer is young again
    EXPECT_EQ(server.requestCount(), 2);
}

TEST_F(EventServiceTest, AFailedRequestIsAnsweredByWhatTheServiceSaidInTheLastDays) {
    server.serve(today("earthquake"));
    load();
    age(29 * kDay);
    server.serveStatus(404);
    EXPECT_EQ(load(), translated("earthquake"));
    ASSERT_TRUE(answerIsAsOf());
    EXPECT_EQ(*answerIsAsOf(), AnswerCache(AnswerCache::userFolder()).newest(server.url())->time);

    const LoopbackServer another;
    setEventService(another.url());
    EXPECT_EQ(load(), "");
    EXPECT_FALSE(answerIsAsOf());
    setEventService(server.url());
    age(kDay);
    EXPECT_EQ(load(), "");
    EXPECT_FALSE(answerIsAsOf());
}

TEST_F(EventServiceTest, ADamagedFileCountsAsNone) {
    server.serve(today("earthquake"));
    load();
    std::string path;
    for (const auto& entry : std::filesystem::directory_iterator(AnswerCache::userFolder()))
        if (entry.file_size() > 0) path = entry.path();
    std::string whole;
    ASSERT_TRUE(readFile(path, whole));
    std::string changed = whole, later = whole;
    changed[whole.find("earthquake")] = 'E';
    later[whole.find('1')] = '2';  // the version
    int expected = server.requestCount();
    for (const std::string& damaged : {whole.substr(0, whole.size() - 3), changed, later, std::string()}) {
        std::ofstream(path, std::ios::binary) << damaged;
        EXPECT_EQ(load(), translated("earthquake"));
        EXPECT_EQ(server.requestCount(), ++expected);
    }
}

TEST_F(EventServiceTest, WithoutAFolderItGoesOnWithoutTheCache) {
    setenv("XDG_CACHE_HOME", "/dev/null/nowhere", true);
    server.serve(today("earthquake"));
    EXPECT_EQ(load(), translated("earthquake"));
    setenv("XDG_CACHE_HOME", "/dev/full", true);
    EXPECT_EQ(load(), translated("earthquake"));
    setenv("XDG_CACHE_HOME", "/proc", true);
    EXPECT_EQ(load(), translated("earthquake"));
    EXPECT_EQ(server.requestCount(), 3);
}

TEST_F(EventServiceTest, ASubstituteAndTheOptionLeaveTheCacheAlone) {
    server.serve(today("earthquake"));
    setAnswersKept(false);
    load();
    EXPECT_EQ(filesKept(), 0u);

    setAnswersKept(true);
    const std::string feed = folder.path("feed.xml");
    std::ofstream(feed) << today("other event");
    setFeedSubstitute(fileURLWithPath(feed));
    EXPECT_EQ(load(), translated("other event"));
    EXPECT_EQ(filesKept(), 0u);
    EXPECT_EQ(server.requestCount(), 1);
}

}  // namespace
