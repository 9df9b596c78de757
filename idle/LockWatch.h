#pragma once

#include <functional>

#include "idle/Bus.h"

// Knows whether the session is locked: every desktop's locker sends the signal ActiveChanged with a boolean.
class LockWatch {
  public:
    LockWatch(Bus& bus, std::function<void()> onChange);

    bool isLocked() const;

  private:
    void activeChanged(sd_bus_message* signal);

    std::function<void()> mOnChange;
    // The lockers that are active. One that leaves the bus no longer counts. It has no handler of its own:
    // while it is empty, one would be called again and again.
    platform::Handle<sd_bus_track, sd_bus_track_unref> mLockers;
};
