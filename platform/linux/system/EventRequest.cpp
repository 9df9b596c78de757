#include "platform/linux/system/EventRequest.h"

#include <algorithm>

#include "platform/linux/system/HttpTransfer.h"
#include "platform/linux/system/RunLoop.h"
#include "platform/linux/system/Trace.h"
#include "service/EventAnswer.h"

namespace platform {

namespace {

constexpr long kNoContent = 204;
constexpr long kNotModified = 304;
constexpr long kTooManyRequests = 429;
constexpr int kUsualPauseSeconds = 1;
constexpr int kLongestPauseSeconds = 2;
// After a big quake a week's answer is some hundred megabytes of picks, of which next to nothing is held.
constexpr HttpLimits kLimits{.bytes = 1LL << 30};

// One request and its answer.
class Exchange {
  public:
    Exchange(const std::string& url, const Validators& known)
        : mTransfer(url, kLimits), mIsConditional(!known.etag.empty() || !known.lastModified.empty()) {
        if (!known.etag.empty()) mTransfer.addHeader("If-None-Match", known.etag);
        if (!known.lastModified.empty()) mTransfer.addHeader("If-Modified-Since", known.lastModified);
        mTransfer.setSink([this](std::string_view bytes) {
            mAnswer.take(bytes);
            return mAnswer.isGood();
        });
    }

    EventReply run() {
        EventReply reply;
        reply.outcome.errorCode = mTransfer.run();
        reply.outcome.failure = mTransfer.failure();
        if (mTransfer.status() == kNoContent) return answered(std::move(reply), EventAnswer::withoutEvents());
        if (mIsConditional && mTransfer.status() == kNotModified) return unchanged(std::move(reply));
        if (reply.outcome.errorCode == 0) return translated(std::move(reply));
        const std::string complaint = mTransfer.complaint();
        if (!complaint.empty()) trace("the service says: " + complaint);
        return reply;
    }

    bool isWorthAnother() const {
        return mTransfer.status() == kTooManyRequests || mTransfer.status() / 100 == 5;
    }
    int pauseMilliseconds() const {
        const long long asked = mTransfer.retryAfterSeconds();
        const long long pause =
            asked > 0 ? std::min<long long>(asked, kLongestPauseSeconds) : kUsualPauseSeconds;
        return static_cast<int>(pause) * 1000;
    }

  private:
    EventReply translated(EventReply reply) {
        mAnswer.finish();
        if (mAnswer.isGood()) return answered(std::move(reply), std::move(mAnswer).document());
        reply.outcome = {coreFoundationUnknownErr, "not a whole QuakeML document", {}};
        return reply;
    }
    EventReply answered(EventReply reply, std::string document) {
        reply.outcome = {};
        reply.document = std::move(document);
        reply.validators = {mTransfer.header("ETag"), mTransfer.header("Last-Modified")};
        return reply;
    }
    EventReply unchanged(EventReply reply) {
        reply.outcome = {};
        reply.isUnchanged = true;
        return reply;
    }

    HttpTransfer mTransfer;
    bool mIsConditional;
    EventAnswer mAnswer;
};

}  // namespace

EventReply askEventService(const std::string& url, const Validators& known) {
    Exchange first(url, known);
    EventReply reply = first.run();
    if (!first.isWorthAnother()) return reply;
    trace("fetch " + url + ": " + reply.outcome.failure + "; once more");
    RunLoop::runFor(first.pauseMilliseconds());
    if (RunLoop::isStopping()) return reply;
    return Exchange(url, known).run();
}

}  // namespace platform
