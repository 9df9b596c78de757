#include "platform/AdvisoryLock.h"

#include <fcntl.h>
#include <sys/file.h>

#include <cerrno>
#include <filesystem>

#include "platform/Files.h"
#include "platform/linux/Handles.h"

namespace platform {

namespace {

constexpr int kPrivateFile = 0600;
constexpr std::size_t kMaxNoteBytes = 4096;

int openPath(const std::string& path) {
    if (isDirectory(path)) return open(path.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (!isPrivateFolder(std::filesystem::path(path).parent_path().string())) return -1;
    return open(path.c_str(), O_RDWR | O_CREAT | O_NOFOLLOW | O_CLOEXEC, kPrivateFile);
}

}  // namespace

struct AdvisoryLock::Descriptor : FileDescriptor {
    using FileDescriptor::FileDescriptor;

    State lock(int operation) const {
        if (flock(number(), operation) == 0) return State::Held;
        return errno == EWOULDBLOCK ? State::TakenByAnother : State::Unavailable;
    }
};

AdvisoryLock::AdvisoryLock(const std::string& path)
    : mDescriptor(std::make_unique<Descriptor>(openPath(path))) {}

// A process forked off meanwhile has the file open too, so closing it here would not be enough.
AdvisoryLock::~AdvisoryLock() {
    if (mIsHeld) mDescriptor->lock(LOCK_UN);
}

AdvisoryLock::State AdvisoryLock::tryToLock() {
    const State state = mDescriptor->lock(LOCK_EX | LOCK_NB);
    mIsHeld = mIsHeld || state == State::Held;
    return state;
}

AdvisoryLock::State AdvisoryLock::waitAndLock() {
    const State state = mDescriptor->lock(LOCK_EX);
    mIsHeld = mIsHeld || state == State::Held;
    return state;
}

std::string AdvisoryLock::note() const {
    char text[kMaxNoteBytes];
    const ssize_t size = pread(mDescriptor->number(), text, sizeof text, 0);
    return size > 0 ? std::string(text, static_cast<std::size_t>(size)) : std::string();
}

void AdvisoryLock::setNote(const std::string& text) {
    if (ftruncate(mDescriptor->number(), 0) != 0) return;
    [[maybe_unused]] const ssize_t written = pwrite(mDescriptor->number(), text.data(), text.size(), 0);
}

}  // namespace platform
