#include "platform/linux/system/EventService.h"

#include "platform/URLLoading.h"
#include "platform/linux/system/EventRequest.h"
#include "service/EventQuery.h"

namespace platform {

namespace {

std::string serviceAddress = kDefaultEventService;
bool answersAreKept = true;
std::optional<std::time_t> asOf;

LoadOutcome loadAnew(const std::string& url, std::string& document) {
    EventReply reply = askEventService(url, {});
    document = std::move(reply.document);
    return reply.outcome;
}

}  // namespace

void setEventService(const std::string& address) { serviceAddress = address; }

void setAnswersKept(bool kept) { answersAreKept = kept; }

LoadOutcome loadEvents(const std::string& feedQuery, std::string& document) {
    asOf.reset();
    const std::string url = eventServiceURL(feedQuery, serviceAddress);
    if (url.empty()) return {coreFoundationUnknownErr, "no query that a service understands"};
    return loadAnew(url, document);
}

std::optional<std::time_t> answerIsAsOf() { return asOf; }

}  // namespace platform
