#include "program/QuakeDigest.h"

#include <cstdio>

#include "platform/Checksum.h"
#include "program/ShownQuakes.h"
#include "quakes/CQuakeEvent.h"
#include "quakes/CQuakeList.h"

namespace {

std::string lineOf(const CQuakeEvent& quake) {
    char line[400];
    std::snprintf(line, sizeof line, "%s %.17g %.17g %.17g %.17g\n", quake.mTime, quake.mMagnitude,
                  quake.mLatitude, quake.mLongitude, quake.mDepth);
    return line;
}

}  // namespace

std::string quakeDigest() {
    std::string text;
    for (const CQuakeEvent* quake : biggestQuakes().GetQuakes())
        if (quake) text += lineOf(*quake);
    return text.empty() ? "" : platform::sha256(text);
}
