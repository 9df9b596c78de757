#include "program/CheckCommand.h"

#include "platform/Clock.h"
#include "program/CoverTask.h"
#include "program/QuakeDigest.h"
#include "program/Restart.h"
#include "service/EventFeed.h"

namespace {

constexpr std::time_t kRecentSeconds = 6 * 60;  // other processes may have asked before this one

bool isRecent(const ServiceAnswer& answer) {
    return !answer.isKept || platform::currentTime() - answer.time < kRecentSeconds;
}

}  // namespace

int checkQuakes(EventFeed& feed) {
    const std::string quakes = quakeDigest();
    // A list that was made of an earlier answer stays as it is; the process that starts in place finds the
    // new one.
    if (feed.finishRequest()) {
        restartAtExit();
        return 0;
    }
    const auto answer = feed.serviceAnswer();
    if (!feed.failure().empty() || !answer || !isRecent(*answer)) return 1;
    reportQuakes(quakes);
    return 0;
}
