#include "idle/WaylandIdle.h"

#include <ext-idle-notify-v1-client.h>  // generated

#include <cstdlib>
#include <string_view>

std::unique_ptr<IdleSource> WaylandIdle::open(EventLoop& loop, std::chrono::milliseconds time,
                                              IdleListener& listener) {
    // Without a name the library would try wayland-0, which may be another session's.
    wl_display* display = std::getenv("WAYLAND_DISPLAY") ? wl_display_connect(nullptr) : nullptr;
    if (!display) return nullptr;
    std::unique_ptr<WaylandIdle> source(new WaylandIdle(display, listener));
    if (!source->findGlobals()) return nullptr;
    source->watch(loop, time);
    return source;
}

WaylandIdle::WaylandIdle(wl_display* display, IdleListener& listener)
    : mDisplay(display), mListener(listener) {}

bool WaylandIdle::findGlobals() {
    static constexpr wl_registry_listener kListener{addGlobal, [](void*, wl_registry*, std::uint32_t) {}};
    wl_registry_add_listener(wl_display_get_registry(mDisplay.get()), &kListener, this);
    return wl_display_roundtrip(mDisplay.get()) >= 0 && mSeat && mNotifier;
}

void WaylandIdle::addGlobal(void* self, wl_registry* registry, std::uint32_t name, const char* interface,
                            std::uint32_t) {
    auto* source = static_cast<WaylandIdle*>(self);
    const auto bind = [&](const wl_interface& wanted) {
        return wl_registry_bind(registry, name, &wanted, 1);
    };
    if (std::string_view(interface) == wl_seat_interface.name && !source->mSeat)
        source->mSeat = static_cast<wl_seat*>(bind(wl_seat_interface));
    else if (std::string_view(interface) == ext_idle_notifier_v1_interface.name)
        source->mNotifier = static_cast<ext_idle_notifier_v1*>(bind(ext_idle_notifier_v1_interface));
}

void WaylandIdle::watch(EventLoop& loop, std::chrono::milliseconds time) {
    using Notification = ext_idle_notification_v1;
    static constexpr ext_idle_notification_v1_listener kListener{
        [](void* self, Notification*) { static_cast<WaylandIdle*>(self)->mListener.becameIdle(); },
        [](void* self, Notification*) { static_cast<WaylandIdle*>(self)->mListener.becameActive(); }};
    const auto milliseconds = static_cast<std::uint32_t>(time.count());
    Notification* notification = ext_idle_notifier_v1_get_idle_notification(mNotifier, milliseconds, mSeat);
    ext_idle_notification_v1_add_listener(notification, &kListener, this);
    wl_display_flush(mDisplay.get());
    loop.watch(wl_display_get_fd(mDisplay.get()), [this, &loop] { dispatch(loop); });
}

void WaylandIdle::dispatch(EventLoop& loop) {
    if (wl_display_dispatch(mDisplay.get()) < 0) return loop.fail("the Wayland compositor has gone");
    wl_display_flush(mDisplay.get());
}
