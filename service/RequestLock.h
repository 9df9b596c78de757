#pragma once

#include <string>

#include "platform/AdvisoryLock.h"

// Lets one of the user's processes ask while the others wait for its result.
class RequestLock {
  public:
    // Tries for so long, while the main loop runs. A process that does not get the lock, because there is no
    // folder or its holder takes too long, goes on without it.
    RequestLock(const std::string& folder, int milliseconds);

    bool isHeld() const { return mState == platform::AdvisoryLock::State::Held; }
    bool isTakenByAnother() const { return mState == platform::AdvisoryLock::State::TakenByAnother; }

    // Tells the waiting processes that the request for this URL failed.
    void noteFailure(const std::string& url) const;
    // Whether the request of another process for this URL failed while this one waited.
    bool hasFailedMeanwhile(const std::string& url) const;

  private:
    mutable platform::AdvisoryLock mLock;
    platform::AdvisoryLock::State mState = platform::AdvisoryLock::State::Unavailable;
    long long mStart;  // of the wait, microseconds
};
