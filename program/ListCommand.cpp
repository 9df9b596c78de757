#include "program/ListCommand.h"

#include <cstdio>
#include <ctime>
#include <string>

#include "platform/Clock.h"
#include "platform/Log.h"
#include "platform/PrintableText.h"
#include "program/ShownQuakes.h"
#include "quakes/CQuakeEvent.h"
#include "service/EventFeed.h"

namespace {

std::string formatted(const std::tm& time, const char* format) {
    char text[64];
    return std::string(text, std::strftime(text, sizeof text, format, &time));
}

// In UTC and in the machine's zone; a text that is not a time as it is.
std::string timesOf(const CQuakeEvent& quake) {
    const auto time = timeOf(quake);
    if (!time) return platform::printable(quake.mTime);
    const std::time_t seconds = time->time_since_epoch().count();
    std::tm utc{};
    gmtime_r(&seconds, &utc);
    return formatted(utc, "%Y-%m-%d %H:%M:%S  ") +
           formatted(platform::localTime(seconds), "%Y-%m-%d %H:%M:%S %Z");
}

int explainNothing(const EventFeed& feed) {
    if (feed.failure().empty()) {
        std::puts("There are no earthquakes to show.");
        return 0;
    }
    platform::log(feed.sourceName() + ": " + feed.failure());
    return 1;
}

}  // namespace

int listQuakes(const EventFeed& feed) {
    const auto quakes = quakesAsShown(biggestQuakes());
    if (quakes.empty()) return explainNothing(feed);
    std::printf("%2s  %9s  %10s  %9s  %9s  %-19s  %s\n", "", "Magnitude", "Depth", "Latitude", "Longitude",
                "Time (UTC)", "Local time");
    int number = 0;
    for (const CQuakeEvent* quake : quakes)
        std::printf("%2d  %9.2f  %7.2f km  %9.3f  %9.3f  %s\n", ++number, quake->mMagnitude, quake->mDepth,
                    quake->mLatitude, quake->mLongitude, timesOf(*quake).c_str());
    return 0;
}
