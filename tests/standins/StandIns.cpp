#include "tests/standins/StandIns.h"

#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <iomanip>
#include <sstream>

#include "platform/portable/NotificationCenter.h"
#include "quakes/CQuakeEvent.h"
#include "quakes/CQuakeList.h"
#include "quakes/CQuakeMLParser.h"
#include "tests/support/Feed.h"

namespace {

// Err ends the process with status 0, which whoever runs the tests would take for success. Death tests run in
// processes of their own.
const pid_t testProcess = getpid();

void failWithinTest() {
    if (getpid() != testProcess || !testing::UnitTest::GetInstance()->current_test_info()) return;
    std::fputs("The test ended its process.\n", stderr);
    _exit(1);
}

std::string described(const CQuakeEvent* quake) {
    if (!quake) return "none";
    std::ostringstream text;
    text << std::setprecision(10) << quake->mTime << " M" << quake->mMagnitude << " at " << quake->mLatitude
         << ", " << quake->mLongitude << ", " << quake->mDepth << " km";
    return text.str();
}

[[maybe_unused]] const int isRegistered = [] {
    testing::UnitTest::GetInstance();  // so that it outlives what asks it
    return std::atexit(failWithinTest);
}();

}  // namespace

namespace standins {

Test::Test() {
    desktop = {};
    CQuakeList::mSingletonInstance = nullptr;
}

void Test::finishALoad() {
    platform::NotificationCenter::post(platform::WebViewProgressFinishedNotification);
}

void Test::serveDocument(const std::string& document) {
    desktop.service = [=](const auto&) { return platform::HTTPResponse{.status = 200, .body = document}; };
}

void Test::serveQuakes(const std::vector<double>& magnitudes) {
    std::string events;
    int latitude = 0;
    for (const double magnitude : magnitudes)
        events += FeedEvent{.latitude = valueOf(latitude++), .mag = valueOf(magnitude)}.xml();
    serveDocument(feedOf(events));
}

std::vector<std::string> Test::quakesIn(const std::string& document) {
    serveDocument(document);
    std::vector<std::string> quakes;
    for (const CQuakeEvent* each : CQuakeMLParser().GetEvents()) quakes.push_back(described(each));
    return quakes;
}

}  // namespace standins

// The quake list, its parser and the quakes live to the end of the process by design; tests make several.
extern "C" const char* __lsan_default_suppressions();
extern "C" const char* __lsan_default_suppressions() { return "leak:CQuakeList::\nleak:CQuakeMLParser::\n"; }
