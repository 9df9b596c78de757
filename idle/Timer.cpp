#include "idle/Timer.h"

#include <ctime>
#include <utility>

Timer::Timer(EventLoop& loop, std::function<void()> action) : mAction(std::move(action)) {
    constexpr std::uint64_t kAccuracy = 10'000;  // microseconds
    sd_event_source* source = nullptr;
    sd_event_add_time(loop.handle(), &source, CLOCK_MONOTONIC, UINT64_MAX, kAccuracy, fire, this);
    mSource.reset(source);
    stop();
}

void Timer::start(std::chrono::milliseconds delay) {
    sd_event_source_set_time_relative(mSource.get(), std::chrono::microseconds(delay).count());
    sd_event_source_set_enabled(mSource.get(), SD_EVENT_ONESHOT);
}

void Timer::stop() { sd_event_source_set_enabled(mSource.get(), SD_EVENT_OFF); }

int Timer::fire(sd_event_source*, std::uint64_t, void* self) {
    static_cast<Timer*>(self)->mAction();
    return 0;
}
