#pragma once

#include <wayland-client.h>

#include <chrono>
#include <memory>

#include "idle/EventLoop.h"
#include "idle/IdleSource.h"

struct ext_idle_notifier_v1;

// A compositor with ext_idle_notifier_v1: KWin, sway 1.8 and later, Hyprland, labwc and others.
class WaylandIdle : public IdleSource {
  public:
    // Null if this desktop does not offer it.
    static std::unique_ptr<IdleSource> open(EventLoop& loop, std::chrono::milliseconds time,
                                            IdleListener& listener);

  private:
    WaylandIdle(wl_display* display, IdleListener& listener);
    bool findGlobals();
    void watch(EventLoop& loop, std::chrono::milliseconds time);
    void dispatch(EventLoop& loop);
    static void addGlobal(void* self, wl_registry* registry, std::uint32_t name, const char* interface,
                          std::uint32_t);

    // Closing the display releases what belongs to it.
    platform::Handle<wl_display, wl_display_disconnect> mDisplay;
    wl_seat* mSeat = nullptr;
    ext_idle_notifier_v1* mNotifier = nullptr;
    IdleListener& mListener;
};
