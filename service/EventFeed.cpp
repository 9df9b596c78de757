#include "service/EventFeed.h"

#include "platform/PrintableText.h"
#include "service/EventAnswer.h"

namespace {

// The last part of a URL's path; the whole URL if there is none.
std::string fileName(const std::string& url) {
    const std::string local = platform::pathOfFileURL(url);
    const std::string path = local.empty() ? url.substr(0, url.find_first_of("?#")) : local;
    const std::string name = path.substr(path.rfind('/') + 1);
    return name.empty() ? url : name;
}

}  // namespace

EventFeed::EventFeed(Source source)
    : mSource(std::move(source)),
      mService(mSource.service, mSource.keepsAnswers, mSource.minuteMilliseconds) {}

std::optional<platform::LoadOutcome> EventFeed::answer(const std::string& url, std::string& data) {
    if (!isFeedQuery(url)) return std::nullopt;
    mFailure.clear();
    const platform::LoadOutcome outcome =
        mSource.document.empty() ? mService.load(url, data) : loadDocument(data);
    if (outcome.errorCode != 0) mFailure = outcome.failure;
    return outcome;
}

// Translates a document in the format of today's event services for the list's parser. Any other document
// stays as it is.
platform::LoadOutcome EventFeed::loadDocument(std::string& data) {
    platform::LoadOutcome outcome = platform::fetchResource(mSource.document, data);
    outcome.source = mSource.document;
    EventAnswer answer;
    answer.take(data);
    answer.finish();
    mFailure = answer.failure();
    if (answer.shape() == EventAnswer::Shape::Today) data = std::move(answer).document();
    return outcome;
}

EventFeed::Kind EventFeed::kind() const {
    if (mSource.document.empty()) return Kind::Service;
    return mSource.isSample ? Kind::Sample : Kind::Document;
}

std::string EventFeed::sourceName() const {
    switch (kind()) {
        case Kind::Service:
            return platform::printable(eventServiceName(mSource.service));
        case Kind::Document:
            return platform::printable(fileName(mSource.document));
        case Kind::Sample:
            return "Sample earthquakes";
    }
    return {};
}
