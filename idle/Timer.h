#pragma once

#include <systemd/sd-event.h>

#include <chrono>
#include <functional>

#include "idle/EventLoop.h"

// Calls action once after each start, unless it is stopped or started again before.
class Timer {
  public:
    Timer(EventLoop& loop, std::function<void()> action);

    void start(std::chrono::milliseconds delay);
    void stop();

  private:
    static int fire(sd_event_source*, std::uint64_t, void* self);

    std::function<void()> mAction;
    platform::Handle<sd_event_source, sd_event_source_disable_unref> mSource;
};
