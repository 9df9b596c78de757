#pragma once

#include <string>

#include "platform/AdvisoryLock.h"

// Lets one process of the user ask while the others wait for what it learns.
class RequestLock {
  public:
    // Tries for five seconds at most, while the main loop runs. A process that does not get the lock, because
    // there is no folder or its holder takes too long, goes on without it.
    explicit RequestLock(const std::string& folder);

    bool isHeld() const { return mState == platform::AdvisoryLock::State::Held; }
    bool isTakenByAnother() const { return mState == platform::AdvisoryLock::State::TakenByAnother; }

    // Lets those who wait now know that the request for this URL failed.
    void noteFailure(const std::string& url) const;
    // Whether the request of another process for this URL failed while this one waited.
    bool hasFailedMeanwhile(const std::string& url) const;

  private:
    mutable platform::AdvisoryLock mLock;
    platform::AdvisoryLock::State mState = platform::AdvisoryLock::State::Unavailable;
    long long mStart;  // of the wait, microseconds
};
