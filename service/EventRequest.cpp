#include "service/EventRequest.h"

#include <algorithm>
#include <utility>

#include "platform/Log.h"
#include "service/EventAnswer.h"

using platform::HTTPRequest, platform::HTTPResponse;

namespace {

constexpr long kNoContent = 204;
constexpr long kNotModified = 304;
constexpr long kTooManyRequests = 429;
constexpr int kUsualPauseSeconds = 1;
constexpr int kLongestPauseSeconds = 2;
// After a big quake a week of events is some hundred megabytes, nearly all picks, which are not kept.
constexpr long long kMaxAnswerBytes = 1LL << 30;

// Room for 10,000 events, the most that a service gives. The list's parser needs up to fifty times as much
// memory.
constexpr std::size_t kMaxDocumentBytes = 4 << 20;

// Why an answer is refused; empty if it is not.
std::string whyRefused(const EventAnswer& answer) {
    if (!answer.isGood()) return answer.failure();
    if (answer.hasDeclarations()) return "declares attributes or entities";
    return answer.documentSize() > kMaxDocumentBytes ? "larger than 4 MiB" : "";
}

HTTPRequest requestFor(const std::string& url, const Validators& known, EventAnswer& answer) {
    HTTPRequest request{.url = url, .maxBytes = kMaxAnswerBytes};
    if (!known.etag.empty()) request.headers.push_back({"If-None-Match", known.etag});
    if (!known.lastModified.empty()) request.headers.push_back({"If-Modified-Since", known.lastModified});
    request.sink = [&answer](std::string_view bytes) {
        answer.take(bytes);
        return whyRefused(answer).empty();
    };
    return request;
}

EventReply answered(const HTTPResponse& response, std::string document) {
    return {.document = std::move(document),
            .validators = {response.header("ETag"), response.header("Last-Modified")}};
}

EventReply failed(int errorCode, std::string failure) {
    return {.outcome = {errorCode, std::move(failure), {}}};
}

// What went wrong, with what the service says about it unless that is a page of HTML.
std::string inItsWords(const HTTPResponse& response) {
    const bool hasWords = !response.complaint.empty() && !response.complaint.starts_with('<');
    return response.failure + (hasWords ? ": " + response.complaint : "");
}

EventReply translated(const HTTPResponse& response, EventAnswer& answer) {
    answer.finish();
    if (answer.isGood()) return answered(response, std::move(answer).document());
    return failed(platform::coreFoundationUnknownErr, answer.failure());
}

EventReply replyTo(const HTTPResponse& response, bool wasConditional, EventAnswer& answer) {
    if (response.status == kNoContent) return answered(response, EventAnswer::withoutEvents());
    if (wasConditional && response.status == kNotModified) return {.isUnchanged = true};
    if (response.errorCode == 0) return translated(response, answer);
    const std::string refusal = whyRefused(answer);
    return failed(response.errorCode, refusal.empty() ? inItsWords(response) : refusal);
}

bool isWorthAnotherTry(const HTTPResponse& response) {
    return response.status == kTooManyRequests || response.status / 100 == 5;
}

int pauseMilliseconds(const HTTPResponse& response) {
    const long long asked = response.retryAfterSeconds;
    return static_cast<int>(asked > 0 ? std::min<long long>(asked, kLongestPauseSeconds)
                                      : kUsualPauseSeconds) *
           1000;
}

}  // namespace

EventRequest::EventRequest(std::string url, Validators known, Handler handler)
    : mUrl(std::move(url)), mKnown(std::move(known)), mHandler(std::move(handler)) {
    ask();
}

EventRequest::~EventRequest() = default;

void EventRequest::ask() {
    mAnswer = std::make_unique<EventAnswer>();
    mTransfer = std::make_unique<platform::HTTPTransfer>(
        requestFor(mUrl, mKnown, *mAnswer), [this](const HTTPResponse& response) { take(response); });
}

void EventRequest::take(const HTTPResponse& response) {
    EventReply reply = replyTo(response, isConditional(), *mAnswer);
    if (mHasPaused || !isWorthAnotherTry(response)) return std::exchange(mHandler, nullptr)(std::move(reply));
    platform::trace("fetch " + mUrl + ": " + reply.outcome.failure + "; trying once more");
    mHasPaused = true;
    mPause = std::make_unique<platform::Timer>(pauseMilliseconds(response), [this] { ask(); });
}
