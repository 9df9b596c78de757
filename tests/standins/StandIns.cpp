#include "tests/standins/StandIns.h"

#include "platform/portable/NotificationCenter.h"
#include "quakes/CQuakeList.h"
#include "tests/support/Feed.h"

namespace standins {

Test::Test() {
    desktop = {};
    CQuakeList::mSingletonInstance = nullptr;
}

void Test::finishALoad() {
    platform::NotificationCenter::post(platform::WebViewProgressFinishedNotification);
}

void Test::serveQuakes(const std::vector<double>& magnitudes) {
    std::string events;
    int latitude = 0;
    for (const double magnitude : magnitudes)
        events += FeedEvent{.latitude = valueOf(latitude++), .mag = valueOf(magnitude)}.xml();
    desktop.answerToAll = feedOf(events);
}

}  // namespace standins

// The quake list, its parser and the quakes live to the end of the process by design; tests make several.
extern "C" const char* __lsan_default_suppressions();
extern "C" const char* __lsan_default_suppressions() { return "leak:CQuakeList::\nleak:CQuakeMLParser::\n"; }
