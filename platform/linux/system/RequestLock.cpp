#include "platform/linux/system/RequestLock.h"

#include <fcntl.h>
#include <glib.h>
#include <sys/file.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <charconv>
#include <string_view>

#include "platform/Files.h"
#include "platform/linux/system/RunLoop.h"

namespace platform {

namespace {

constexpr int kPrivateFile = 0600;
constexpr int kPollMilliseconds = 20;
// Somewhat longer than a transfer may take.
constexpr long long kLongestWaitMicroseconds = 35'000'000;

int openLock(const std::string& folder) {
    if (!makePrivateFolder(folder)) return -1;
    return open((folder + "/lock").c_str(), O_RDWR | O_CREAT | O_CLOEXEC, kPrivateFile);
}

}  // namespace

RequestLock::RequestLock(const std::string& folder)
    : mFile(openLock(folder)), mStart(g_get_monotonic_time()) {
    if (mFile < 0) return;
    while (!(mIsHeld = tryToLock()) && !RunLoop::isStopping()) {
        const bool isTakenByAnother = errno == EWOULDBLOCK;  // some file systems have no locks at all
        if (!isTakenByAnother || g_get_monotonic_time() - mStart > kLongestWaitMicroseconds) return;
        RunLoop::runFor(kPollMilliseconds);
    }
}

// A process forked off meanwhile has the file open as well, so that closing it would not be enough.
RequestLock::~RequestLock() {
    if (mIsHeld) flock(mFile, LOCK_UN);
    if (mFile >= 0) close(mFile);
}

bool RequestLock::tryToLock() const { return flock(mFile, LOCK_EX | LOCK_NB) == 0; }

// The file holds the time and the question. All processes of a machine share the clock that never jumps.
void RequestLock::noteFailure(const std::string& url) const {
    if (!mIsHeld || ftruncate(mFile, 0) != 0) return;
    const std::string note = std::to_string(g_get_monotonic_time()) + " " + url;
    // A note cut short is none: the others then ask for themselves.
    [[maybe_unused]] const ssize_t written = pwrite(mFile, note.data(), note.size(), 0);
}

bool RequestLock::hasFailedMeanwhile(const std::string& url) const {
    if (!mIsHeld) return false;
    char buffer[4096];
    const ssize_t size = pread(mFile, buffer, sizeof buffer, 0);
    if (size <= 0) return false;
    const std::string_view note(buffer, static_cast<std::size_t>(size));
    const std::size_t blank = note.find(' ');
    long long time = 0;
    std::from_chars(note.data(), note.data() + std::min(blank, note.size()), time);
    return time >= mStart && time <= g_get_monotonic_time() && blank != note.npos &&
           note.substr(blank + 1) == url;
}

}  // namespace platform
