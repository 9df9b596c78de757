#include "tests/standins/QuakeFeed.h"

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

std::string feedOf(const std::string& events) {
    return "<?xml version=\"1.0\"?>" + element("quakeml", element("eventParameters", events));
}

void serveQuakes(const std::vector<double>& magnitudes) {
    std::string events;
    int latitude = 0;
    for (const double magnitude : magnitudes)
        events += FeedEvent{.latitude = value(latitude++), .mag = value(magnitude)}.xml();
    urlLoading().answerToAll = feedOf(events);
}

}  // namespace standins
