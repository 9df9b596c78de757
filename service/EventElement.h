#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

// One event of an event service's answer, only as far as the choice of events and the feed's parser need it.
// A value is missing if its element is, and empty if the element is.
struct EventElement {
    using Text = std::optional<std::string>;

    struct Origin {
        std::string publicID;
        Text time, latitude, longitude;
        Text depth;  // metres
        Text evaluationMode, evaluationStatus;
        Text usedPhaseCount;
    };
    struct Magnitude {
        std::string publicID;
        Text mag;
        Text stationCount;
    };

    std::string publicID;
    Text type;
    Text preferredOriginID, preferredMagnitudeID;
    std::vector<Origin> origins;
    std::vector<Magnitude> magnitudes;

    // The preferred ones, or else the first; null if there are none.
    const Origin* origin() const;
    const Magnitude* magnitude() const;
};

// The event as an earthquake of QuakeML 1.0.1: depth in kilometres, time in UTC. Drops the value of a depth
// that is not a number.
std::string asQuakeML101(const EventElement& event);
