#pragma once

#include <string>

namespace platform {

// Lets one process of the user ask while the others wait for what it finds out. The system takes the lock
// from a process that dies.
class RequestLock {
  public:
    // Tries for a bounded time, while the main loop runs. Without the lock in the end, for want of a folder
    // or because its holder takes too long, the process goes on without it.
    explicit RequestLock(const std::string& folder);
    ~RequestLock();
    RequestLock(const RequestLock&) = delete;
    RequestLock& operator=(const RequestLock&) = delete;

    bool isHeld() const { return mIsHeld; }

    // Tells those who wait now that this question was asked in vain.
    void noteFailure(const std::string& url) const;
    // Whether another process asked the question in vain while this one waited.
    bool hasFailedMeanwhile(const std::string& url) const;

  private:
    bool tryToLock() const;

    int mFile;
    bool mIsHeld = false;
    long long mStart;  // of the wait
};

}  // namespace platform
