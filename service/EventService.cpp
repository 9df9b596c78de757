#include "service/EventService.h"

#include <algorithm>
#include <iterator>
#include <utility>

#include "platform/Log.h"
#include "platform/RunLoop.h"
#include "service/EventQuery.h"

using platform::LoadOutcome;

namespace {

constexpr int kPauseMinutes[] = {1, 2, 5, 10};

}  // namespace

EventService::EventService(std::string address, bool keepsAnswers, int minuteMilliseconds)
    : mAddress(std::move(address)), mKeepsAnswers(keepsAnswers), mMinuteMilliseconds(minuteMilliseconds) {}

LoadOutcome EventService::load(const std::string& feedQuery, std::string& document) {
    mAnswer.reset();
    mPause.reset();
    mUrl = eventServiceURL(feedQuery, mAddress);
    if (mUrl.empty())
        return {platform::coreFoundationUnknownErr, "not a query that a service understands", {}};
    mQuestion = std::make_unique<EventQuestion>(mAddress, mUrl, mKeepsAnswers);
    const LoadOutcome outcome = mQuestion->answer(document);
    mAnswer = mQuestion->serviceAnswer();
    if (!mQuestion->isAsking()) mQuestion.reset();
    const bool isOver = outcome.errorCode == 0 || platform::RunLoop::isStopping();
    if (!isOver && mNewsHandler) askAgainLater();
    return outcome;
}

bool EventService::finishRequest() {
    if (!mQuestion) return false;
    platform::RunLoop::runUntil([this] { return !mQuestion->isAsking(); });
    return mQuestion->hasBeenAnswered();
}

void EventService::askAgainLater() {
    const std::size_t last = std::size(kPauseMinutes) - 1;
    const int minutes = kPauseMinutes[std::min(mRetries++, last)];
    mPause = std::make_unique<platform::Timer>(mMinuteMilliseconds * minutes, [this] { askAgain(); });
}

void EventService::askAgain() {
    mQuestion = std::make_unique<EventQuestion>(mAddress, mUrl, mKeepsAnswers);
    mQuestion->askInBackground([this](bool isAnswered) {
        mQuestion.reset();
        if (isAnswered) return mNewsHandler();
        platform::trace("fetch " + mUrl + ": still no answer");
        askAgainLater();
    });
}
