#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

// One event of an event service's answer: only what the feed's parser reads. A value is missing where its
// element is, and empty where the element has none.
struct EventElement {
    using Text = std::optional<std::string>;

    struct Origin {
        std::string publicID;
        Text time, latitude, longitude;
        Text depth;  // metres
    };
    struct Magnitude {
        std::string publicID;
        Text mag;
    };

    std::string publicID;
    Text type;
    Text preferredOriginID, preferredMagnitudeID;
    std::vector<Origin> origins;
    std::vector<Magnitude> magnitudes;
};

// The event as an element of QuakeML 1.0.1: type, the preferred origin and the preferred magnitude, or the
// first of either where the preferred one is not there; depth in kilometres, time in UTC. A depth that is no
// number loses its value.
std::string asQuakeML101(const EventElement& event);
