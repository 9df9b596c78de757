#include "tests/standins/StandIns.h"

#include <unistd.h>

#include <cstdio>
#include <cstdlib>

#include "platform/portable/NotificationCenter.h"
#include "quakes/CQuakeList.h"
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
