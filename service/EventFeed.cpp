#include "service/EventFeed.h"

#include <chrono>

#include "service/EventAnswer.h"
#include "support/ISOTime.h"

EventFeed::EventFeed(Source source)
    : mDocument(std::move(source.document)), mService(std::move(source.service), source.keepsAnswers) {}

std::optional<platform::LoadOutcome> EventFeed::answer(const std::string& url, std::string& data) {
    if (!isFeedQuery(url)) return std::nullopt;
    return mDocument.empty() ? mService.load(url, data) : loadDocument(data);
}

// Translates a document in the format of today's event services for the list's parser. Any other document
// stays as it is.
platform::LoadOutcome EventFeed::loadDocument(std::string& data) const {
    platform::LoadOutcome outcome = platform::fetchResource(mDocument, data);
    outcome.source = mDocument;
    EventAnswer answer;
    answer.take(data);
    answer.finish();
    if (answer.shape() == EventAnswer::Shape::Today) data = std::move(answer).document();
    return outcome;
}

std::string EventFeed::asOfScript() const {
    const auto time = mService.asOf();
    const std::string value =
        time ? '"' + isoTime(std::chrono::sys_seconds(std::chrono::seconds(*time))) + "Z\"" : "null";
    return "window.TELLMAR_AS_OF = " + value + ";\n";
}
