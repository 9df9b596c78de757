#pragma once

#include <memory>
#include <string>

namespace platform {

// A lock on a file or a folder that all processes of the user who want it respect. The system takes it from a
// process that dies.
class AdvisoryLock {
  public:
    enum class State { Held, TakenByAnother, Unavailable };

    // Opens the path: a folder, or a file, which is made where there is none. Locks nothing yet.
    explicit AdvisoryLock(const std::string& path);
    ~AdvisoryLock();
    AdvisoryLock(const AdvisoryLock&) = delete;
    AdvisoryLock& operator=(const AdvisoryLock&) = delete;

    // Unavailable: the path cannot be opened, or its file system has no locks.
    State tryToLock();
    State waitAndLock();

    // A short text in the file for whoever opens it. A text cut short by an error may be read. Empty when
    // there is none.
    std::string note() const;
    void setNote(const std::string& text);

  private:
    struct Descriptor;
    std::unique_ptr<Descriptor> mDescriptor;
    bool mIsHeld = false;
};

}  // namespace platform
