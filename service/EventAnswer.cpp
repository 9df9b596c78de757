#include "service/EventAnswer.h"

#include "platform/URLLoading.h"
#include "service/EventChoice.h"

namespace {

using platform::XMLStartTag;

constexpr std::string_view kNamespaces = "quakeml.org/xmlns/";
constexpr std::string_view kEarlierNamespace = "quakeml.org/xmlns/quakeml/1.";
constexpr char kHead[] =
    "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
    "<quakeml xmlns=\"http://quakeml.org/xmlns/quakeml/1.0\"><eventParameters>\n";
constexpr char kTail[] = "</eventParameters></quakeml>\n";

// The parser takes 255 characters: a text cut here is still too long for it, but does not fill the memory.
constexpr std::size_t kMaxTextBytes = 1024;
// Far more than any event has.
constexpr std::size_t kMaxCandidates = 1000;
constexpr std::size_t kMaxDocumentBytes = platform::kMaxResourceBytes;

// Some services write https instead of http in QuakeML's namespaces.
std::string_view withoutScheme(std::string_view uri) {
    for (const std::string_view scheme : {"http://", "https://"})
        if (uri.starts_with(scheme)) return uri.substr(scheme.size());
    return {};
}

EventAnswer::Shape shapeOf(const XMLStartTag& root) {
    using Shape = EventAnswer::Shape;
    if (root.name != "quakeml") return Shape::Other;
    if (root.namespaceURI.empty()) return Shape::Earlier;
    const std::string_view uri = withoutScheme(root.namespaceURI);
    if (!uri.starts_with(kNamespaces)) return Shape::Other;
    if (!uri.starts_with(kEarlierNamespace)) return Shape::Today;
    const std::string_view minor = uri.substr(kEarlierNamespace.size());
    const bool isEarlier = minor.starts_with('0') || minor == "1";
    return isEarlier ? Shape::Earlier : Shape::Today;
}

bool isOfQuakeML(const XMLStartTag& tag) {
    return tag.namespaceURI.empty() || withoutScheme(tag.namespaceURI).starts_with(kNamespaces);
}

// As many whole UTF-8 characters as there is room for.
std::string_view shortened(std::string_view text, std::size_t room = kMaxTextBytes) {
    if (text.size() <= room) return text;
    while (room > 0 && (static_cast<unsigned char>(text[room]) & 0xc0) == 0x80) --room;
    return text.substr(0, room);
}

}  // namespace

EventAnswer::EventAnswer() : mStream(*this) {}

void EventAnswer::take(std::string_view bytes) {
    if (mShape != Shape::Today) keep(bytes);
    if (mIsWellFormed) mIsWellFormed = mStream.take(bytes);
}

void EventAnswer::finish() {
    mIsWellFormed = mIsWellFormed && mStream.finish();
    if (mShape != Shape::Today) return;
    if (isGood())
        mDocument += kTail;
    else
        mDocument.clear();
}

bool EventAnswer::isGood() const { return mIsWellFormed && !mIsTooLarge && mShape != Shape::Other; }

std::string EventAnswer::failure() const {
    if (isGood()) return {};
    if (mShape == Shape::Other) return "not QuakeML";
    return mIsTooLarge ? "larger than 64 MiB" : "not XML, " + mStream.failure();
}

std::string EventAnswer::document() && { return std::move(mDocument); }

std::string EventAnswer::withoutEvents() { return std::string(kHead) + kTail; }

void EventAnswer::keep(std::string_view bytes) {
    mIsTooLarge = mIsTooLarge || mDocument.size() + bytes.size() > kMaxDocumentBytes;
    if (mIsTooLarge)
        mDocument = {};
    else
        mDocument += bytes;
}

void EventAnswer::startElement(const XMLStartTag& tag) {
    if (mSkippedLevels > 0 || !enter(tag)) ++mSkippedLevels;
}

void EventAnswer::endElement() {
    if (mSkippedLevels > 0) {
        --mSkippedLevels;
        return;
    }
    if (mPlaces.back() == Place::Event) finishEvent();
    if (mPlaces.back() == Place::Text) mText = nullptr;
    mPlaces.pop_back();
}

void EventAnswer::characters(std::string_view text) {
    if (!mText || mPlaces.back() != Place::Text || mSkippedLevels > 0) return;
    const std::string_view kept = shortened(text, kMaxTextBytes - (*mText)->size());
    (*mText)->append(kept);
    if (kept.size() < text.size()) mText = nullptr;  // the rest does not fit either
}

// Returns false for an element that is ignored there.
bool EventAnswer::enter(const XMLStartTag& tag) {
    if (mPlaces.back() != Place::Document && !isOfQuakeML(tag)) return false;
    switch (mPlaces.back()) {
        case Place::Document:
            return enterRoot(tag);
        case Place::Root:
            return tag.name == "eventParameters" && go(Place::EventParameters);
        case Place::EventParameters:
            return tag.name == "event" && enterEvent(tag);
        case Place::Event:
            return enterPartOfEvent(tag);
        case Place::Origin:
            return enterPartOfOrigin(tag.name);
        case Place::Quality:
            return tag.name == "usedPhaseCount" && enterText(mEvent.origins.back().usedPhaseCount);
        case Place::Magnitude:
            return enterPartOfMagnitude(tag.name);
        case Place::Quantity:
            if (tag.name != "value" || mHasValue) return false;
            mHasValue = true;
            return go(Place::Text);
        case Place::Text:
            return false;
    }
    return false;
}

bool EventAnswer::enterRoot(const XMLStartTag& tag) {
    mShape = shapeOf(tag);
    if (mShape != Shape::Today) return false;
    mDocument = kHead;
    return go(Place::Root);
}

bool EventAnswer::enterEvent(const XMLStartTag& tag) {
    mEvent = {};
    mEvent.publicID = shortened(tag.attribute("publicID"));
    return go(Place::Event);
}

bool EventAnswer::enterPartOfEvent(const XMLStartTag& tag) {
    if (tag.name == "type") return enterText(mEvent.type);
    if (tag.name == "preferredOriginID") return enterText(mEvent.preferredOriginID);
    if (tag.name == "preferredMagnitudeID") return enterText(mEvent.preferredMagnitudeID);
    if (tag.name == "origin" && mEvent.origins.size() < kMaxCandidates) {
        mEvent.origins.emplace_back().publicID = shortened(tag.attribute("publicID"));
        return go(Place::Origin);
    }
    if (tag.name == "magnitude" && mEvent.magnitudes.size() < kMaxCandidates) {
        mEvent.magnitudes.emplace_back().publicID = shortened(tag.attribute("publicID"));
        return go(Place::Magnitude);
    }
    return false;
}

bool EventAnswer::enterPartOfOrigin(std::string_view name) {
    EventElement::Origin& origin = mEvent.origins.back();
    if (name == "time") return enterQuantity(origin.time);
    if (name == "latitude") return enterQuantity(origin.latitude);
    if (name == "longitude") return enterQuantity(origin.longitude);
    if (name == "depth") return enterQuantity(origin.depth);
    if (name == "evaluationMode") return enterText(origin.evaluationMode);
    if (name == "evaluationStatus") return enterText(origin.evaluationStatus);
    return name == "quality" && go(Place::Quality);
}

bool EventAnswer::enterPartOfMagnitude(std::string_view name) {
    EventElement::Magnitude& magnitude = mEvent.magnitudes.back();
    if (name == "mag") return enterQuantity(magnitude.mag);
    return name == "stationCount" && enterText(magnitude.stationCount);
}

// Only the first element of a name counts.
bool EventAnswer::enterText(EventElement::Text& text) {
    if (text) return false;
    text.emplace();
    mText = &text;
    return go(Place::Text);
}

bool EventAnswer::enterQuantity(EventElement::Text& quantity) {
    if (quantity) return false;
    quantity.emplace();
    mText = &quantity;
    mHasValue = false;
    return go(Place::Quantity);
}

bool EventAnswer::go(Place place) {
    mPlaces.push_back(place);
    return true;
}

void EventAnswer::finishEvent() {
    if (isEarthquakeToShow(mEvent)) keep(asQuakeML101(mEvent));
}
