#include "platform/linux/system/EventService.h"

#include <curl/curl.h>

#include "platform/Clock.h"
#include "platform/URLLoading.h"
#include "platform/linux/system/AnswerCache.h"
#include "platform/linux/system/EventRequest.h"
#include "platform/linux/system/RequestLock.h"
#include "platform/linux/system/RunLoop.h"
#include "platform/linux/system/Trace.h"
#include "service/EventQuery.h"

namespace platform {

namespace {

constexpr std::time_t kFreshSeconds = 5 * 60;
constexpr std::time_t kUsableSeconds = 30 * 24 * 60 * 60;

std::string serviceAddress = kDefaultEventService;
bool answersAreKept = true;
std::optional<std::time_t> asOf;

// An answer from the future, of a clock that was wrong, is never young.
bool isYounger(const KeptAnswer& answer, std::time_t seconds) {
    const std::time_t age = currentTime() - answer.time;
    return age >= 0 && age < seconds;
}

LoadOutcome loadAnew(const std::string& url, std::string& document) {
    EventReply reply = askEventService(url, {});
    document = std::move(reply.document);
    reply.outcome.source = url;
    return reply.outcome;
}

// One question to the service, with the answers kept so far at hand.
class Question {
  public:
    Question(const std::string& url, std::string& document)
        : mUrl(url), mDocument(document), mCache(AnswerCache::userFolder()) {}

    LoadOutcome answer() {
        if (hasFresh()) return useKept();
        const RequestLock lock(mCache.folder());
        if (RunLoop::isStopping()) return {CURLE_ABORTED_BY_CALLBACK, "stopped", mUrl};
        if (hasFresh()) return useKept();
        if (lock.hasFailedMeanwhile(mUrl))
            return useEarlier({coreFoundationUnknownErr, "asked in vain by another process", mUrl});
        return ask(lock);
    }

  private:
    bool hasFresh() {
        mKept = mCache.find(mUrl);
        return mKept && isYounger(*mKept, kFreshSeconds);
    }
    LoadOutcome useKept() {
        mDocument = std::move(mKept->document);
        return {0, {}, "what is kept of " + mKept->url};
    }

    LoadOutcome ask(const RequestLock& lock) {
        EventReply reply = askEventService(mUrl, mKept ? mKept->validators : Validators());
        if (reply.isUnchanged && mKept) return keep(std::move(*mKept));
        if (reply.outcome.errorCode == 0 && !reply.isUnchanged)
            return keep({.service = serviceAddress,
                         .url = mUrl,
                         .time = 0,
                         .validators = std::move(reply.validators),
                         .document = std::move(reply.document)});
        reply.outcome.source = mUrl;
        if (RunLoop::isStopping()) return reply.outcome;
        lock.noteFailure(mUrl);
        return useEarlier(reply.outcome);
    }

    LoadOutcome keep(KeptAnswer answer) {
        answer.time = currentTime();
        if (!mCache.store(answer)) trace("the answer cannot be kept in " + mCache.folder());
        mDocument = std::move(answer.document);
        return {0, {}, mUrl};
    }

    LoadOutcome useEarlier(LoadOutcome failed) {
        mKept = mCache.newest(serviceAddress);
        if (!mKept || !isYounger(*mKept, kUsableSeconds)) return failed;
        trace("fetch " + mUrl + ": " + failed.failure);
        asOf = mKept->time;
        return useKept();
    }

    const std::string& mUrl;
    std::string& mDocument;
    const AnswerCache mCache;
    std::optional<KeptAnswer> mKept;  // the one looked up last
};

}  // namespace

void setEventService(const std::string& address) { serviceAddress = address; }

void setAnswersKept(bool kept) { answersAreKept = kept; }

LoadOutcome loadEvents(const std::string& feedQuery, std::string& document) {
    asOf.reset();
    const std::string url = eventServiceURL(feedQuery, serviceAddress);
    if (url.empty()) return {coreFoundationUnknownErr, "no query that a service understands", {}};
    return answersAreKept ? Question(url, document).answer() : loadAnew(url, document);
}

std::optional<std::time_t> answerIsAsOf() { return asOf; }

}  // namespace platform
