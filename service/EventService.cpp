#include "service/EventService.h"

#include <utility>

#include "platform/Clock.h"
#include "platform/Log.h"
#include "platform/RunLoop.h"
#include "service/AnswerCache.h"
#include "service/EventQuery.h"
#include "service/EventRequest.h"
#include "service/RequestLock.h"

using platform::LoadOutcome, platform::RunLoop;

namespace {

constexpr std::time_t kFreshSeconds = 5 * 60;
constexpr std::time_t kUsableSeconds = 30 * 24 * 60 * 60;

// A date in the future came from a wrong clock: such an answer is never young.
bool isYounger(const KeptAnswer& answer, std::time_t seconds) {
    const std::time_t age = platform::currentTime() - answer.time;
    return age >= 0 && age < seconds;
}

// One question to the service, answered from the cache if possible.
class Question {
  public:
    Question(const std::string& service, const std::string& url, std::string& document)
        : mService(service), mUrl(url), mDocument(document), mCache(AnswerCache::userFolder()) {}

    LoadOutcome answer() {
        if (hasFresh()) return useKept();
        const RequestLock lock(mCache.folder());
        if (RunLoop::isStopping()) return {platform::coreFoundationUnknownErr, "stopped", mUrl};
        if (hasFresh()) return useKept();
        if (lock.hasFailedMeanwhile(mUrl))
            return useEarlier(
                {platform::coreFoundationUnknownErr, "the request of another process failed", mUrl});
        if (lock.isTakenByAnother() && hasEarlier())
            return useEarlier({platform::coreFoundationUnknownErr, "another process is still asking", mUrl});
        return ask(lock);
    }

    std::optional<ServiceAnswer> serviceAnswer() const { return mAnswer; }

  private:
    bool hasFresh() {
        mKept = mCache.find(mUrl);
        return mKept && isYounger(*mKept, kFreshSeconds);
    }
    bool hasEarlier() const {
        const auto earlier = mCache.newest(mService);
        return earlier && isYounger(*earlier, kUsableSeconds);
    }
    LoadOutcome useKept() {
        mAnswer = {mKept->time, true};
        mDocument = std::move(mKept->document);
        return {0, {}, "the kept answer to " + mKept->url};
    }

    LoadOutcome ask(const RequestLock& lock) {
        EventReply reply = askEventService(mUrl, mKept ? mKept->validators : Validators());
        if (reply.isUnchanged && mKept) return keep(std::move(*mKept));
        if (reply.outcome.errorCode == 0 && !reply.isUnchanged)
            return keep({.service = mService,
                         .url = mUrl,
                         .validators = std::move(reply.validators),
                         .document = std::move(reply.document)});
        reply.outcome.source = mUrl;
        if (RunLoop::isStopping()) return reply.outcome;
        lock.noteFailure(mUrl);
        return useEarlier(reply.outcome);
    }

    LoadOutcome keep(KeptAnswer answer) {
        answer.time = platform::currentTime();
        if (!mCache.store(answer)) platform::trace("cannot keep the answer in " + mCache.folder());
        mAnswer = {answer.time, false};
        mDocument = std::move(answer.document);
        return {0, {}, mUrl};
    }

    LoadOutcome useEarlier(const LoadOutcome& failed) {
        mKept = mCache.newest(mService);
        if (!mKept || !isYounger(*mKept, kUsableSeconds)) return failed;
        platform::trace("fetch " + mUrl + ": " + failed.failure);
        return useKept();
    }

    const std::string& mService;
    const std::string& mUrl;
    std::string& mDocument;
    const AnswerCache mCache;
    std::optional<KeptAnswer> mKept;  // the last one looked up
    std::optional<ServiceAnswer> mAnswer;
};

}  // namespace

EventService::EventService(std::string address, bool keepsAnswers)
    : mAddress(std::move(address)), mKeepsAnswers(keepsAnswers) {}

LoadOutcome EventService::load(const std::string& feedQuery, std::string& document) {
    mAnswer.reset();
    const std::string url = eventServiceURL(feedQuery, mAddress);
    if (url.empty())
        return {platform::coreFoundationUnknownErr, "not a query that a service understands", {}};
    if (!mKeepsAnswers) return loadWithoutCache(url, document);
    Question question(mAddress, url, document);
    const LoadOutcome outcome = question.answer();
    mAnswer = question.serviceAnswer();
    return outcome;
}

LoadOutcome EventService::loadWithoutCache(const std::string& url, std::string& document) {
    EventReply reply = askEventService(url, {});
    document = std::move(reply.document);
    reply.outcome.source = url;
    if (reply.outcome.errorCode == 0) mAnswer = {platform::currentTime(), false};
    return reply.outcome;
}
