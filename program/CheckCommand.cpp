#include "program/CheckCommand.h"

#include "platform/Clock.h"
#include "program/CoverTask.h"
#include "program/QuakeDigest.h"
#include "service/EventFeed.h"

namespace {

constexpr std::time_t kRecentSeconds = 6 * 60;  // other processes may have asked before this one

bool isRecent(const ServiceAnswer& answer) {
    return !answer.isKept || platform::currentTime() - answer.time < kRecentSeconds;
}

}  // namespace

int checkQuakes(const EventFeed& feed) {
    const std::string quakes = quakeDigest();
    const auto answer = feed.serviceAnswer();
    if (!feed.failure().empty() || !answer || !isRecent(*answer)) return 1;
    reportQuakes(quakes);
    return 0;
}
