#include "service/EventQuestion.h"

#include <algorithm>
#include <utility>

#include "platform/Clock.h"
#include "platform/Log.h"
#include "platform/RunLoop.h"

using platform::LoadOutcome, platform::RunLoop;

namespace {

constexpr std::time_t kFreshSeconds = 5 * 60;
constexpr std::time_t kUsableSeconds = 30 * 24 * 60 * 60;
// The service may be silent, or another process that asks it be stopped.
constexpr int kPatienceMilliseconds = 5000;

// A date in the future came from a wrong clock: such an answer is never young.
bool isYounger(const KeptAnswer& answer, std::time_t seconds) {
    const std::time_t age = platform::currentTime() - answer.time;
    return age >= 0 && age < seconds;
}

LoadOutcome failed(const std::string& failure, const std::string& url) {
    return {platform::coreFoundationUnknownErr, failure, url};
}

}  // namespace

EventQuestion::EventQuestion(std::string service, std::string url, bool keepsAnswers)
    : mService(std::move(service)),
      mUrl(std::move(url)),
      mKeepsAnswers(keepsAnswers),
      mCache(AnswerCache::userFolder()),
      mStart(platform::monotonicMicroseconds()) {}

LoadOutcome EventQuestion::answer(std::string& document) {
    LoadOutcome outcome = mKeepsAnswers ? answerWithCache(document) : askAndWait({}, document);
    if (!isAsking()) mLock.reset();
    return outcome;
}

LoadOutcome EventQuestion::answerWithCache(std::string& document) {
    if (hasFresh()) return use(*mKept, document);
    mLock = std::make_unique<RequestLock>(mCache.folder(), kPatienceMilliseconds);
    if (RunLoop::isStopping()) return failed("stopped", mUrl);
    if (hasFresh()) return use(*mKept, document);
    const auto earlier = earlierAnswer();
    if (mLock->hasFailedMeanwhile(mUrl))
        return useInstead(earlier, failed("the request of another process failed", mUrl), document);
    if (mLock->isTakenByAnother() && earlier)
        return useInstead(earlier, failed("another process is still asking", mUrl), document);
    return askAndWait(earlier, document);
}

LoadOutcome EventQuestion::askAndWait(const std::optional<KeptAnswer>& earlier, std::string& document) {
    ask();
    const auto isOver = [this] { return !isAsking(); };
    if (earlier)
        RunLoop::runUntil(isOver, millisecondsLeft());
    else
        RunLoop::runUntil(isOver);
    if (RunLoop::isStopping()) {
        mRequest.reset();
        return failed("stopped", mUrl);
    }
    if (isAsking()) return useInstead(earlier, failed("the service is silent", mUrl), document);
    if (!mGiven) return useInstead(earlier, mOutcome, document);
    mServiceAnswer = {mGiven->time, false};
    document = std::move(mGiven->document);
    return {0, {}, mUrl};
}

LoadOutcome EventQuestion::use(const KeptAnswer& answer, std::string& document) {
    mServiceAnswer = {answer.time, true};
    document = answer.document;
    return {0, {}, "the kept answer to " + answer.url};
}

LoadOutcome EventQuestion::useInstead(const std::optional<KeptAnswer>& earlier, const LoadOutcome& failure,
                                      std::string& document) {
    if (!earlier) return failure;
    platform::trace("fetch " + mUrl + ": " + failure.failure);
    return use(*earlier, document);
}

void EventQuestion::askInBackground(std::function<void(bool isAnswered)> done) {
    mDone = std::move(done);
    if (mKeepsAnswers) mLock = std::make_unique<RequestLock>(mCache.folder(), 0);
    if (mLock && mLock->isTakenByAnother())
        mPause = std::make_unique<platform::Timer>(kPatienceMilliseconds, [this] { askUnlessAnswered(); });
    else
        askUnlessAnswered();
}

void EventQuestion::askUnlessAnswered() {
    if (mKeepsAnswers && earlierAnswer()) return std::exchange(mDone, nullptr)(true);
    ask();
}

bool EventQuestion::hasFresh() {
    mKept = mCache.find(mUrl);
    return mKept && isYounger(*mKept, kFreshSeconds);
}

std::optional<KeptAnswer> EventQuestion::earlierAnswer() const {
    auto earlier = mCache.newest(mService);
    return earlier && isYounger(*earlier, kUsableSeconds) ? earlier : std::nullopt;
}

int EventQuestion::millisecondsLeft() const {
    const long long passed = (platform::monotonicMicroseconds() - mStart) / 1000;
    return static_cast<int>(std::max(0LL, kPatienceMilliseconds - passed));
}

void EventQuestion::ask() {
    mRequest = std::make_unique<EventRequest>(mUrl, mKept ? mKept->validators : Validators(),
                                              [this](EventReply reply) { take(std::move(reply)); });
}

void EventQuestion::take(EventReply reply) {
    mRequest.reset();
    mOutcome = std::move(reply.outcome);
    mOutcome.source = mUrl;
    if (reply.isUnchanged && mKept)
        keep(*std::move(mKept));
    else if (mOutcome.errorCode == 0 && !reply.isUnchanged)
        keep({.service = mService,
              .url = mUrl,
              .validators = std::move(reply.validators),
              .document = std::move(reply.document)});
    else if (mLock)
        mLock->noteFailure(mUrl);
    mLock.reset();
    if (mDone) std::exchange(mDone, nullptr)(mGiven.has_value());
}

void EventQuestion::keep(KeptAnswer answer) {
    answer.time = platform::currentTime();
    if (mKeepsAnswers && !mCache.store(answer))
        platform::trace("cannot keep the answer in " + mCache.folder());
    mGiven = std::move(answer);
}
