#include "platform/linux/system/EventService.h"

#include <gmock/gmock.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>

#include "platform/URLLoading.h"
#include "platform/linux/system/AnswerCache.h"
#include "platform/linux/system/FeedSubstitute.h"
#include "platform/linux/system/Trace.h"
#include "service/EventAnswer.h"
#include "tests/TemporaryFolder.h"
#include "tests/support/LoopbackServer.h"

using namespace platform;
using testing::HasSubstr, testing::Not;

namespace {

constexpr char kQuery[] =
    "http://magma.geonet.org.nz/services/quake/quakeml/1.0.1/query?"
    "startDate=2026-11-13&endDate=2026-11-21&magnitudeLower=4&magnitudeUpper=10&outputFormat=quakeml1.0";
constexpr std::time_t kMinute = 60, kDay = 24 * 60 * kMinute;

std::string documentWith(const std::string& type) {
    return "<q:quakeml xmlns:q='http://quakeml.org/xmlns/quakeml/1.2' "
           "xmlns='http://quakeml.org/xmlns/bed/1.2'>"
           "<eventParameters><event><pick/><type>" +
           type + "</type></event></eventParameters></q:quakeml>";
}
const std::string kToday = documentWith("earthquake"), kLater = documentWith("other event");

std::string translated(const std::string& document) {
    EventAnswer answer;
    answer.take(document);
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

    // Has an answer kept that is that old.
    void keepAnswerOf(std::time_t age) {
        server.serve(kToday);
        load();
        makeOlder(age);
    }
    void makeOlder(std::time_t seconds) const {
        const AnswerCache cache(AnswerCache::userFolder());
        auto answer = cache.newest(server.url());
        ASSERT_TRUE(answer);
        answer->time -= seconds;
        ASSERT_TRUE(cache.store(*answer));
    }
    bool isAnswerKept() const {
        return AnswerCache(AnswerCache::userFolder()).newest(server.url()).has_value();
    }

    TemporaryFolder folder;
    LoopbackServer server;
};

TEST_F(EventServiceTest, TheListsQueryIsAnsweredByTheServiceOfTodayOrOf2009) {
    setAnswersKept(false);
    server.serve(kToday);
    EXPECT_EQ(load(), translated(kToday));
    EXPECT_THAT(server.lastTarget(), testing::StartsWith("/fdsnws/event/1/query?starttime="));
    EXPECT_EQ(server.lastHeader("Accept-Encoding"), "gzip");
    const std::string earlier = "<quakeml xmlns='http://quakeml.org/xmlns/quakeml/1.0'> <a/></quakeml>";
    server.serve(earlier);
    EXPECT_EQ(load(), earlier);
    server.serveStatus(204);
    EXPECT_EQ(load(), EventAnswer::withoutEvents());
}

TEST_F(EventServiceTest, WhatIsNoWholeAnswerIsNothing) {
    setAnswersKept(false);
    for (const std::string& document : {std::string("<html><body>Please log in</body></html>"),
                                        kToday.substr(0, kToday.size() - 3), std::string()}) {
        server.serve(document);
        EXPECT_EQ(load(), "") << document;
    }
    server.cutOff(kToday);
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
    for (const auto& [statuses, answer] :
         {std::pair{std::vector{429}, translated(kToday)}, {{503}, translated(kToday)}, {{503, 503}, ""}}) {
        server.serveAfter(statuses, kToday);
        const int before = server.requestCount();
        EXPECT_EQ(load(), answer);
        EXPECT_EQ(server.requestCount() - before, 2);
    }
}

TEST_F(EventServiceTest, APackedAnswerMayUnpackToMoreThanAPlainOneMayHold) {
    std::string large = kToday;
    large.insert(large.find("<pick/>"), std::string(kMaxResourceBytes, ' '));
    server.serve(large);  // as a text type, and so packed
    EXPECT_EQ(load(), translated(kToday));
}

TEST_F(EventServiceTest, TheServicesComplaintIsTraced) {
    setAnswersKept(false);
    setVerbose(true);
    server.serveStatus(400, "unknown parameter: \x1b[1mlimit\nUsage details are available", "text/plain");
    testing::internal::CaptureStderr();
    load();
    const std::string lines = testing::internal::GetCapturedStderr();
    EXPECT_THAT(lines, HasSubstr("tellmar: the service says: unknown parameter:  [1mlimit\n"));
    EXPECT_THAT(lines, HasSubstr("HTTP status 400"));
    EXPECT_THAT(lines, Not(HasSubstr("Usage")));
}

TEST_F(EventServiceTest, AYoungAnswerIsUsedAgain) {
    keepAnswerOf(4 * kMinute);
    server.serve(kLater);
    EXPECT_EQ(load(), translated(kToday));
    EXPECT_EQ(server.requestCount(), 1);
    EXPECT_FALSE(answerIsAsOf());
    for (const std::time_t older : {kMinute, -kDay}) {  // the second by a clock that was ahead
        makeOlder(older);
        const int before = server.requestCount();
        EXPECT_EQ(load(), translated(kLater));
        EXPECT_EQ(server.requestCount() - before, 1);
    }
}

TEST_F(EventServiceTest, AnOlderAnswerIsAskedForOnCondition) {
    server.answerWith([](const auto& request, auto& response) {
        response.set_header("ETag", "\"one\"");
        response.set_header("Last-Modified", "Sat, 21 Nov 2026 01:02:03 GMT");
        if (request.has_header("If-None-Match"))
            response.status = 304;
        else
            response.set_content(kToday, "application/xml");
    });
    load();
    EXPECT_EQ(server.lastHeader("If-None-Match"), "");
    makeOlder(6 * kMinute);
    for (int time = 0; time < 2; ++time) EXPECT_EQ(load(), translated(kToday));  // the second is young again
    EXPECT_EQ(server.lastHeader("If-None-Match"), "\"one\"");
    EXPECT_EQ(server.lastHeader("If-Modified-Since"), "Sat, 21 Nov 2026 01:02:03 GMT");
    EXPECT_EQ(server.requestCount(), 2);
    EXPECT_FALSE(answerIsAsOf());
}

TEST_F(EventServiceTest, AFailedRequestIsAnsweredByWhatTheServiceSaidInTheLastDays) {
    keepAnswerOf(29 * kDay);
    server.serveStatus(404);
    EXPECT_EQ(load(), translated(kToday));
    ASSERT_TRUE(answerIsAsOf());
    EXPECT_EQ(*answerIsAsOf(), AnswerCache(AnswerCache::userFolder()).newest(server.url())->time);

    const LoopbackServer another;
    setEventService(another.url());
    EXPECT_EQ(load(), "");
    EXPECT_FALSE(answerIsAsOf());
    setEventService(server.url());
    makeOlder(kDay);
    EXPECT_EQ(load(), "");
    EXPECT_FALSE(answerIsAsOf());
}

TEST_F(EventServiceTest, ADamagedFileCountsAsNone) {
    keepAnswerOf(0);
    std::string path;
    for (const auto& entry : std::filesystem::directory_iterator(AnswerCache::userFolder()))
        if (entry.file_size() > 0) path = entry.path();
    const std::string whole = contentsOf(path);
    std::string changed = whole, later = whole;
    changed[whole.find("earthquake")] = 'E';
    later[whole.find('1')] = '2';  // the version
    int expected = server.requestCount();
    for (const std::string& damaged : {whole.substr(0, whole.size() - 3), changed, later, std::string()}) {
        std::ofstream(path, std::ios::binary) << damaged;
        EXPECT_EQ(load(), translated(kToday));
        EXPECT_EQ(server.requestCount(), ++expected);
    }
}

TEST_F(EventServiceTest, WithoutAFolderItGoesOnWithoutTheCache) {
    server.serve(kToday);
    for (const char* cache : {"/dev/null/nowhere", "/dev/full", "/proc"}) {
        setenv("XDG_CACHE_HOME", cache, true);
        EXPECT_EQ(load(), translated(kToday)) << cache;
    }
    EXPECT_EQ(server.requestCount(), 3);
}

TEST_F(EventServiceTest, ASubstituteAndTheOptionLeaveTheCacheAlone) {
    server.serve(kToday);
    setAnswersKept(false);
    load();
    EXPECT_FALSE(isAnswerKept());

    setAnswersKept(true);
    std::ofstream("feed.xml") << kLater;
    setFeedSubstitute(fileURLWithPath("feed.xml"));
    EXPECT_EQ(load(), translated(kLater));
    EXPECT_FALSE(isAnswerKept());
    EXPECT_EQ(server.requestCount(), 1);
}

}  // namespace
