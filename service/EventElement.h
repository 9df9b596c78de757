#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

// One event of an event service's answer, only as far as the feed's parser reads it. A value is missing if
// its element is, and empty if the element is.
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

// The event as an element of QuakeML 1.0.1: its type, the preferred origin and magnitude, or else the first
// ones; depth in kilometres, time in UTC. Drops the value of a depth that is not a number.
std::string asQuakeML101(const EventElement& event);
