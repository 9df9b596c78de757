#include "program/ListCommand.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <vector>

#include "platform/PrintableText.h"
#include "quakes/CQuakeEvent.h"
#include "quakes/CQuakeList.h"

namespace {

constexpr int kShownQuakes = 10;

// One round of the list's cycle. The first two swap places: the view that asks for its page second appears
// first.
std::vector<const CQuakeEvent*> quakesAsShown() {
    CQuakeList* list = CQuakeList::Instance();
    list->KeepBiggestQuakes(kShownQuakes);
    std::array<const CQuakeEvent*, kShownQuakes> handedOut;
    for (auto& quake : handedOut) quake = list->GetNextQuake();
    std::swap(handedOut[0], handedOut[1]);

    std::vector<const CQuakeEvent*> shown;
    for (const CQuakeEvent* quake : handedOut)
        if (quake && std::find(shown.begin(), shown.end(), quake) == shown.end()) shown.push_back(quake);
    return shown;
}

}  // namespace

int listQuakes() {
    const auto quakes = quakesAsShown();
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
