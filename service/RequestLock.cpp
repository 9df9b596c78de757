#include "service/RequestLock.h"

#include <algorithm>
#include <charconv>
#include <string_view>

#include "platform/Clock.h"
#include "platform/Files.h"
#include "platform/RunLoop.h"

using State = platform::AdvisoryLock::State;
using platform::RunLoop;

namespace {

constexpr int kPollMilliseconds = 20;

std::string lockFile(const std::string& folder) {
    platform::makePrivateFolder(folder);
    return folder + "/lock";
}

}  // namespace

RequestLock::RequestLock(const std::string& folder, int milliseconds)
    : mLock(lockFile(folder)), mStart(platform::monotonicMicroseconds()) {
    mState = mLock.tryToLock();
    while (mState == State::TakenByAnother && !RunLoop::isStopping() &&
           platform::monotonicMicroseconds() - mStart < 1000LL * milliseconds) {
        RunLoop::runFor(kPollMilliseconds);
        mState = mLock.tryToLock();
    }
}

// The note holds the time and the URL. All processes of a machine share the monotonic clock.
void RequestLock::noteFailure(const std::string& url) const {
    if (isHeld()) mLock.setNote(std::to_string(platform::monotonicMicroseconds()) + " " + url);
}

// A truncated note names another URL: the process then asks for itself.
bool RequestLock::hasFailedMeanwhile(const std::string& url) const {
    if (!isHeld()) return false;
    const std::string note = mLock.note();
    const std::size_t blank = note.find(' ');
    long long time = 0;
    std::from_chars(note.data(), note.data() + std::min(blank, note.size()), time);
    return time >= mStart && time <= platform::monotonicMicroseconds() && blank != note.npos &&
           note.substr(blank + 1) == url;
}
