#include "tests/standins/QuakeFeed.h"

#include <cstddef>

#include "tests/standins/URLLoading.h"

namespace standins {

namespace {

std::string element(const std::string& name, const std::string& inside) {
    return "<" + name + ">" + inside + "</" + name + ">";
}

std::string value(double number) { return element("value", std::to_string(number)); }

}  // namespace

std::string FeedEvent::xml() const {
    const std::string origin = element("time", time) + element("latitude", latitude) +
                               element("longitude", longitude) + element("depth", depth);
    return element("event", element("type", type) + element("origin", origin) +
                                element("magnitude", element("mag", mag)));
}

FeedEvent eventOfMagnitude(double magnitude) {
    FeedEvent event;
    event.mag = value(magnitude);
    return event;
}

std::string feedOf(const std::string& events) {
    return "<?xml version=\"1.0\"?>" + element("quakeml", element("eventParameters", events));
}

void serveQuakes(const std::vector<double>& magnitudes) {
    std::string events;
    for (std::size_t i = 0; i < magnitudes.size(); ++i) {
        FeedEvent event = eventOfMagnitude(magnitudes[i]);
        event.latitude = value(static_cast<double>(i));
        events += event.xml();
    }
    urlLoading().answerToAll = feedOf(events);
}

}  // namespace standins
