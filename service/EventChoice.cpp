#include "service/EventChoice.h"

#include <charconv>
#include <string_view>

#include "service/EventElement.h"
#include "support/Text.h"

namespace {

using Text = EventElement::Text;

// GeoNet's own rule for alerts about events that nobody has reviewed.
constexpr int kMinPhases = 20;
constexpr int kMinStations = 10;

std::string_view wordIn(const Text& text) { return text ? trimmed(*text) : std::string_view(); }

int countIn(const Text& text) {
    const std::string_view digits = wordIn(text);
    int count = 0;
    std::from_chars(digits.data(), digits.data() + digits.size(), count);
    return count;
}

// Without any of these the parser declines the event.
bool isComplete(const EventElement::Origin& origin, const EventElement::Magnitude& magnitude) {
    return !wordIn(origin.time).empty() && origin.latitude && origin.longitude && origin.depth &&
           magnitude.mag;
}

bool isReviewed(const EventElement::Origin& origin) {
    const std::string_view status = wordIn(origin.evaluationStatus);
    return wordIn(origin.evaluationMode) == "manual" || status == "confirmed" || status == "reviewed" ||
           status == "final";
}

bool isWellRecorded(const EventElement::Origin& origin, const EventElement::Magnitude& magnitude) {
    return countIn(origin.usedPhaseCount) >= kMinPhases && countIn(magnitude.stationCount) >= kMinStations;
}

bool cannotBeJudged(const EventElement::Origin& origin, const EventElement::Magnitude& magnitude) {
    return !origin.evaluationMode && !origin.usedPhaseCount && !magnitude.stationCount;
}

}  // namespace

bool isEarthquakeToShow(const EventElement& event) {
    const auto* const origin = event.origin();
    const auto* const magnitude = event.magnitude();
    if (!origin || !magnitude || !isComplete(*origin, *magnitude)) return false;
    if (wordIn(origin->evaluationStatus) == "rejected") return false;
    if (!wordIn(event.type).empty()) return event.type == "earthquake";
    return isReviewed(*origin) || isWellRecorded(*origin, *magnitude) || cannotBeJudged(*origin, *magnitude);
}
