#include "service/EventFeed.h"

#include <cstdlib>

#include "platform/RunLoop.h"
#include "service/AnswerCache.h"
#include "service/EventAnswer.h"
#include "tests/TemporaryFolder.h"
#include "tests/standins/StandIns.h"
#include "tests/support/Feed.h"

namespace {

namespace fs = std::filesystem;
using platform::AdvisoryLock, platform::HTTPRequest, platform::HTTPResponse, platform::RunLoop;
using standins::desktop;
using testing::Contains, testing::ElementsAre, testing::Field, testing::FieldsAre;
using testing::HasSubstr, testing::IsEmpty, testing::Optional, testing::SizeIs, testing::StartsWith;

constexpr char kQuery[] =
    "http://magma.geonet.org.nz/services/quake/quakeml/1.0.1/query?"
    "startDate=2026-11-13&endDate=2026-11-21&magnitudeLower=4&magnitudeUpper=10&outputFormat=quakeml1.0";
constexpr char kService[] = "https://quakes.example/";
constexpr char kAddress[] = "https://quakes.example/fdsnws/event/1/query?starttime=";
constexpr std::time_t kMinute = 60, kDay = 24 * 60 * kMinute;

std::string documentWith(const std::string& magnitude) {
    return "<q:quakeml xmlns:q='http://quakeml.org/xmlns/quakeml/1.2' "
           "xmlns='http://quakeml.org/xmlns/bed/1.2'><eventParameters>" +
           FeedEvent{.mag = valueOf(magnitude)}.xml() + "</eventParameters></q:quakeml>";
}
const std::string kToday = documentWith("5.5"), kLater = documentWith("6.6");

std::string translated(const std::string& document) {
    EventAnswer answer;
    answer.take(document);
    answer.finish();
    return std::move(answer).document();
}

HTTPResponse answerOf(const std::string& document) { return {.status = 200, .body = document}; }
HTTPResponse failureOf(int status) {
    const std::string text = "status " + std::to_string(status);
    return {.errorCode = status, .failure = "HTTP " + text, .status = status, .complaint = text};
}

// Lets the service answer with these in turn, and with the last one from then on.
void serve(std::vector<HTTPResponse> answers) {
    desktop.service = [answers, next = 0u](const HTTPRequest&) mutable {
        return answers[std::min<std::size_t>(next++, answers.size() - 1)];
    };
}

class EventFeedTest : public standins::Test {
  protected:
    EventFeedTest() { setenv("XDG_CACHE_HOME", folder.path().c_str(), true); }
    ~EventFeedTest() override { unsetenv("XDG_CACHE_HOME"); }

    // What the quake list gets; empty when the load failed.
    std::string load(EventFeed& asked) {
        std::string data;
        const long long start = desktop.monotonicMicroseconds;
        const auto outcome = asked.answer(kQuery, data);
        secondsOfLoad = static_cast<double>(desktop.monotonicMicroseconds - start) / 1e6;
        EXPECT_TRUE(outcome);
        EXPECT_EQ(data.empty(), outcome->errorCode != 0);
        return data;
    }
    std::string load() { return load(feed); }
    // It holds the lock, and is done before this one looks again.
    void anotherProcessAsksMeanwhile() {
        desktop.lock = AdvisoryLock::State::TakenByAnother;
        desktop.whileWaiting = [this] {
            desktop.whileWaiting = nullptr;
            desktop.lock = AdvisoryLock::State::Held;
            EventFeed another({.service = kService});
            load(another);
        };
    }
    static void pass(std::time_t seconds) { desktop.now += seconds; }
    void keepAnAnswerFor(std::time_t seconds) {
        serve({answerOf(kToday), answerOf(kLater)});
        load();
        pass(seconds);
    }

    double secondsOfLoad = 0;
    TemporaryFolder folder;
    EventFeed feed{{.service = kService}};
    EventFeed feedWithoutCache{{.service = kService, .keepsAnswers = false}};
};

TEST_F(EventFeedTest, TheServiceIsAskedInItsOwnDialectAndAnswersInTheLists) {
    const std::string earlier = "<quakeml xmlns='http://quakeml.org/xmlns/quakeml/1.0'> <a/></quakeml>";
    const std::pair<HTTPResponse, std::string> cases[] = {{answerOf(kToday), translated(kToday)},
                                                          {answerOf(earlier), earlier},
                                                          {failureOf(204), EventAnswer::withoutEvents()},
                                                          {failureOf(304), ""},
                                                          {failureOf(413), ""}};
    for (const auto& [answer, expected] : cases) {
        serve({answer});
        EXPECT_EQ(load(feedWithoutCache), expected);
        EXPECT_THAT(std::exchange(desktop.requests, {}),
                    ElementsAre(Field(&HTTPRequest::url, StartsWith(kAddress))));
    }
    EXPECT_EQ(feedWithoutCache.failure(), "HTTP status 413: status 413");
    EXPECT_FALSE(fs::exists(AnswerCache::userFolder()));
}

TEST_F(EventFeedTest, ADocumentThatIsIncompleteOrNotQuakeMLIsDiscarded) {
    const std::pair<std::string, std::string> cases[] = {
        {"<html><body>Please log in</body></html>", "not QuakeML"},
        {"<quakeml xmlns='urn:other'/>", "not QuakeML"},
        {"<q:quakeml\nxmlns:q='http://quakeml.org/xmlns/quakeml/1.2'>\n<q:a></q:quakeml>",
         "not XML, line 3: mismatched tag"},
        {kToday.substr(0, kToday.size() - 3), "not XML, line 1: unclosed token"},
        {"", "not XML, line 1: no element found"},
        {"<quakeml>" + std::string(5 << 20, ' ') + "</quakeml>", "larger than 4 MiB"},
        {"<!DOCTYPE a [<!ATTLIST a b CDATA 'c'>]>" + kToday, "declares attributes or entities"},
        {"<!DOCTYPE a [<!ENTITY b 'c'>]><quakeml/>" + std::string(50, ' '),
         "declares attributes or entities"}};
    for (const auto& [document, failure] : cases) {
        serve({answerOf(document)});
        EXPECT_EQ(load(feedWithoutCache), "") << document.substr(0, 80);
        EXPECT_EQ(feedWithoutCache.failure(), failure);
    }
}

TEST_F(EventFeedTest, ABusyServiceIsAskedOnceMoreAfterAPause) {
    HTTPResponse busy = failureOf(429);
    busy.retryAfterSeconds = 3600;
    serve({busy, answerOf(kToday)});
    EXPECT_EQ(load(feedWithoutCache), translated(kToday));
    EXPECT_EQ(secondsOfLoad, 2);
    serve({failureOf(500), failureOf(503), answerOf(kToday)});
    EXPECT_EQ(load(feedWithoutCache), "");
    EXPECT_THAT(desktop.requests, SizeIs(4));
    desktop.whileWaiting = [] { desktop.isStopping = true; };
    load(feedWithoutCache);
    EXPECT_THAT(desktop.requests, SizeIs(5));  // not once more after a stop
}

TEST_F(EventFeedTest, AnAnswerIsUsedForFiveMinutesAndThenAskedForOnCondition) {
    HTTPResponse whole = answerOf(kToday);
    whole.headers = {{"etag", "\"one\""}, {"Last-Modified", "Sat, 21 Nov 2026 01:02:03 GMT"}};
    serve({whole, failureOf(304), answerOf(kLater)});
    load();
    EXPECT_THAT(desktop.requests[0].headers, IsEmpty());
    for (const std::size_t requests : {1, 2}) {  // the answer to the second makes it young again
        pass(5 * kMinute - 1);
        EXPECT_EQ(load(), translated(kToday));
        EXPECT_THAT(desktop.requests, SizeIs(requests));
        pass(1);
        EXPECT_EQ(load(), translated(requests == 1 ? kToday : kLater));
        EXPECT_THAT(desktop.requests.back().headers,
                    ElementsAre(FieldsAre("If-None-Match", "\"one\""),
                                FieldsAre("If-Modified-Since", "Sat, 21 Nov 2026 01:02:03 GMT")));
    }
}

TEST_F(EventFeedTest, AfterAFailureTheServicesLatestAnswerOf30DaysHasToDo) {
    desktop.now = 1795222800;  // 2026-11-21T01:00:00Z
    serve({answerOf(kToday), failureOf(404)});
    load();
    pass(30 * kDay - 1);
    EXPECT_EQ(load(), translated(kToday));
    EXPECT_THAT(feed.serviceAnswer(), Optional(FieldsAre(1795222800, true)));

    EventFeed another({.service = "https://elsewhere.example/"});
    EXPECT_EQ(load(another), "");
    pass(1);
    EXPECT_EQ(load(), "");
    EXPECT_FALSE(feed.serviceAnswer());
}

TEST_F(EventFeedTest, WhoWaitsForAnotherProcessUsesWhatItLearns) {
    serve({failureOf(404)});
    load();  // leaves a note from before the wait
    anotherProcessAsksMeanwhile();
    EXPECT_EQ(load(), "");
    EXPECT_FALSE(desktop.whileWaiting);  // it has waited
    EXPECT_THAT(desktop.requests, SizeIs(2));
    serve({answerOf(kToday)});
    anotherProcessAsksMeanwhile();
    EXPECT_EQ(load(), translated(kToday));
    EXPECT_THAT(desktop.requests, SizeIs(3));
}

TEST_F(EventFeedTest, AProcessThatCannotGetTheLockGoesOnWithoutIt) {
    for (const auto state : {AdvisoryLock::State::TakenByAnother, AdvisoryLock::State::Unavailable}) {
        desktop.lock = state;
        serve({failureOf(404)});
        EXPECT_EQ(load(), "");
        EXPECT_EQ(desktop.lockNote, "");
        EXPECT_LE(secondsOfLoad, 6);
    }
    desktop.isStopping = true;
    desktop.requests.clear();
    EXPECT_EQ(load(), "");
    EXPECT_THAT(desktop.requests, IsEmpty());
}

TEST_F(EventFeedTest, WhoWaitsLongForAnotherProcessUsesAnEarlierAnswer) {
    keepAnAnswerFor(10 * kMinute);
    desktop.lock = AdvisoryLock::State::TakenByAnother;
    EXPECT_EQ(load(), translated(kToday));
    EXPECT_LE(secondsOfLoad, 6);
    EXPECT_THAT(desktop.requests, SizeIs(1));
    EXPECT_TRUE(feed.serviceAnswer()->isKept);
}

TEST_F(EventFeedTest, ASilentServiceIsLeftForAnEarlierAnswerAndStillAsked) {
    desktop.serviceMilliseconds = 20'000;
    keepAnAnswerFor(10 * kMinute);
    EXPECT_EQ(secondsOfLoad, 20);  // there was nothing else to show
    EXPECT_EQ(load(), translated(kToday));
    EXPECT_EQ(secondsOfLoad, 5);
    EXPECT_TRUE(feed.serviceAnswer()->isKept);
    RunLoop::runFor(20'000);
    EventFeed next({.service = kService});
    EXPECT_EQ(load(next), translated(kLater));  // from the cache
    EXPECT_THAT(desktop.requests, SizeIs(2));
}

TEST_F(EventFeedTest, AFailedRequestIsRepeatedUntilThereIsNews) {
    serve({failureOf(404)});
    std::vector<long long> minutes;
    int news = 0;
    feed.setNewsHandler([&] { ++news; });
    load();
    const long long start = desktop.monotonicMicroseconds;
    desktop.service = [&](const HTTPRequest&) {
        minutes.push_back((desktop.monotonicMicroseconds - start) / 60'000'000);
        return minutes.size() < 7 ? failureOf(404) : answerOf(kToday);
    };
    RunLoop::runFor(100 * 60'000);
    EXPECT_THAT(minutes, ElementsAre(1, 3, 8, 18, 28, 38, 48));
    EXPECT_EQ(news, 1);
    EXPECT_EQ(load(), translated(kToday));  // from the cache
}

TEST_F(EventFeedTest, AnotherProcessesAnswerIsNewsAndItsStopIsNot) {
    serve({failureOf(404)});
    int news = 0;
    for (EventFeed* each : {&feed, &feedWithoutCache}) {
        each->setNewsHandler([&] { ++news; });
        load(*each);
    }
    desktop.lock = AdvisoryLock::State::TakenByAnother;
    desktop.requests.clear();
    RunLoop::runFor(70'000);
    EXPECT_THAT(desktop.requests, SizeIs(2));
    serve({answerOf(kToday)});
    EventFeed another({.service = kService});
    load(another);
    desktop.requests.clear();
    RunLoop::runFor(130'000);
    EXPECT_EQ(news, 2);
    EXPECT_THAT(desktop.requests, SizeIs(1));  // of the one without a cache
}

TEST_F(EventFeedTest, AFileThatIsDamagedOrThatOthersMayHaveWrittenIsIgnored) {
    serve({answerOf(kToday)});
    load();
    const auto asksAgain = [&] {
        desktop.requests.clear();
        EXPECT_EQ(load(), translated(kToday));
        return !desktop.requests.empty();
    };
    const fs::path userFolder = AnswerCache::userFolder();
    const fs::path path = fs::directory_iterator(userFolder)->path();
    const std::string whole = contentsOf(path);
    std::string changed = whole, later = whole;
    changed[whole.find("earthquake")] = 'E';
    later[whole.find('2')] = '1';  // the version
    for (const std::string& damaged : {whole.substr(0, whole.size() - 3), changed, later, std::string()}) {
        std::ofstream(path, std::ios::binary) << damaged;
        EXPECT_TRUE(asksAgain()) << damaged;
    }
    EXPECT_FALSE(asksAgain());
    fs::permissions(userFolder, fs::perms::others_write, fs::perm_options::add);
    EXPECT_TRUE(asksAgain());
}

TEST_F(EventFeedTest, WithoutAFolderItGoesOnWithoutTheCache) {
    serve({answerOf(kToday)});
    setenv("XDG_CACHE_HOME", "/proc", true);
    EXPECT_EQ(load(), translated(kToday));
    EXPECT_THAT(desktop.traceLines, Contains(HasSubstr("cannot keep the answer in /proc")));
}

TEST_F(EventFeedTest, FewFilesAreKeptAndNoneIsBig) {
    const AnswerCache cache(folder.path("new/folder"));
    const auto store = [&](const std::string& url, std::time_t time, const std::string& document) {
        return cache.store({.service = kService, .url = url, .time = time, .document = document});
    };
    for (int i = 0; i < 20; ++i) ASSERT_TRUE(store(std::to_string(i), i, "x"));
    std::ofstream(cache.folder() + "/answer-2-draft.123-1") << "of a process that was killed";
    std::ofstream(cache.folder() + "/another program's") << "x";
    ASSERT_TRUE(store("last", 99, "x"));
    EXPECT_EQ(filesIn(cache.folder()), 5);
    EXPECT_FALSE(store("big", 100, std::string(5 << 20, 'x')));
    EXPECT_EQ(cache.newest(kService)->url, "last");
}

TEST_F(EventFeedTest, ADocumentTakesTheServicesPlace) {
    EventFeed substituted({.service = kService, .document = "https://elsewhere.example/feed.xml"});
    std::string data;
    EXPECT_FALSE(substituted.answer("http://quakes.example/", data));
    const std::tuple<std::string, std::string, std::string> cases[] = {
        {kToday, translated(kToday), ""},
        {"not XML", "not XML", "not XML, line 1: syntax error"},
        {"<other/>", "<other/>", "not QuakeML"},
        {kToday.substr(0, kToday.size() - 3), "", "not XML, line 1: unclosed token"}};
    for (const auto& [document, expected, failure] : cases) {
        serve({answerOf(document)});
        EXPECT_EQ(substituted.answer(kQuery, data)->source, "https://elsewhere.example/feed.xml");
        EXPECT_EQ(data, expected);
        EXPECT_EQ(substituted.failure(), failure);
        EXPECT_EQ(desktop.requests.back().url, "https://elsewhere.example/feed.xml");
    }
    serve({failureOf(404)});
    substituted.answer(kQuery, data);
    EXPECT_EQ(substituted.failure(), "HTTP status 404");
}

}  // namespace
