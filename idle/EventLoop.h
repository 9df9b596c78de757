#pragma once

#include <systemd/sd-event.h>

#include <functional>
#include <list>
#include <string>

#include "platform/linux/Handle.h"

// The loop on which everything happens, in one thread. A signal that asks the program to end stops it.
class EventLoop {
  public:
    EventLoop();

    // Calls action whenever the descriptor has something to read or has been closed, as long as the loop
    // lives.
    void watch(int descriptor, std::function<void()> action);

    // Runs until it is stopped. Returns the exit status.
    int run();
    void stop();
    // Stops with the exit status 1, after one line that says why.
    void fail(const std::string& reason);

    sd_event* handle() const { return mEvent.get(); }

  private:
    platform::Handle<sd_event, sd_event_unref> mEvent;
    std::list<std::function<void()>> mActions;
};
