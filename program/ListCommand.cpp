#include "program/ListCommand.h"

#include <cstdio>

#include "platform/PrintableText.h"
#include "program/ShownQuakes.h"
#include "quakes/CQuakeEvent.h"
#include "quakes/CQuakeList.h"

namespace {

constexpr int kShownQuakes = 10;

}  // namespace

int listQuakes() {
    CQuakeList* list = CQuakeList::Instance();
    list->KeepBiggestQuakes(kShownQuakes);
    const auto quakes = quakesAsShown(*list);
    if (quakes.empty()) {
        std::puts("There are no earthquakes to show.");
        return 0;
    }
    std::printf("%2s  %9s  %10s  %9s  %9s  %s\n", "", "Magnitude", "Depth", "Latitude", "Longitude",
                "Time (UTC)");
    int number = 0;
    for (const CQuakeEvent* quake : quakes)
        std::printf("%2d  %9.2f  %7.2f km  %9.3f  %9.3f  %s\n", ++number, quake->mMagnitude, quake->mDepth,
                    quake->mLatitude, quake->mLongitude, platform::printable(quake->mTime).c_str());
    return 0;
}
