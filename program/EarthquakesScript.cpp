#include "program/EarthquakesScript.h"

#include <chrono>
#include <optional>

#include "program/ShownQuakes.h"
#include "quakes/CQuakeEvent.h"
#include "quakes/CQuakeList.h"
#include "service/EventFeed.h"
#include "support/ISOTime.h"
#include "support/JSON.h"

namespace {

using std::chrono::seconds, std::chrono::sys_seconds;

std::string timeAsJSON(std::optional<sys_seconds> time) {
    return time ? jsonText(isoTime(*time) + "Z") : "null";
}

std::string asJSON(const CQuakeEvent& quake) {
    return "{\"time\": " + timeAsJSON(timeOf(quake)) + ", \"magnitude\": " + jsonNumber(quake.mMagnitude) +
           ", \"latitude\": " + jsonNumber(quake.mLatitude) +
           ", \"longitude\": " + jsonNumber(quake.mLongitude) + ", \"depth\": " + jsonNumber(quake.mDepth) +
           "}";
}

std::string shownAsJSON() {
    std::string all;
    if (const CQuakeList* list = CQuakeList::mSingletonInstance)
        for (const CQuakeEvent* quake : quakesAsShown(*list))
            all += (all.empty() ? "" : ", ") + asJSON(*quake);
    return "[" + all + "]";
}

const char* nameOf(EventFeed::Kind kind) {
    switch (kind) {
        case EventFeed::Kind::Service:
            return "service";
        case EventFeed::Kind::Document:
            return "document";
        case EventFeed::Kind::Sample:
            return "sample";
    }
    return "";
}

}  // namespace

std::string earthquakesScript(const EventFeed& feed) {
    const auto answer = feed.serviceAnswer();
    const auto time = answer ? std::optional(sys_seconds(seconds(answer->time))) : std::nullopt;
    return "window.TELLMAR_EARTHQUAKES = {\"shown\": " + shownAsJSON() +
           ", \"answerTime\": " + timeAsJSON(time) +
           ", \"isKept\": " + (answer && answer->isKept ? "true" : "false") +
           ", \"source\": " + jsonText(feed.sourceName()) + ", \"kind\": " + jsonText(nameOf(feed.kind())) +
           "};\n";
}
