#pragma once

#include <memory>
#include <string>

namespace platform {

// A lock on a file or folder, respected by every process that asks for it. The system releases it when its
// holder dies.
class AdvisoryLock {
  public:
    enum class State { Held, TakenByAnother, Unavailable };

    // Opens the path: a folder, or a file in a private folder; a missing file is created. A link to a file is
    // not followed. Locks nothing yet.
    explicit AdvisoryLock(const std::string& path);
    ~AdvisoryLock();
    AdvisoryLock(const AdvisoryLock&) = delete;
    AdvisoryLock& operator=(const AdvisoryLock&) = delete;

    // Unavailable: the path cannot be opened, or its file system has no locks.
    State tryToLock();
    State waitAndLock();

    // A short text in the file for whoever opens it, empty when there is none. It may be truncated after a
    // failed write.
    std::string note() const;
    void setNote(const std::string& text);

  private:
    struct Descriptor;
    std::unique_ptr<Descriptor> mDescriptor;
    bool mIsHeld = false;
};

}  // namespace platform
