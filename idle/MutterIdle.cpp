#include "idle/MutterIdle.h"

#include <cstdlib>

namespace {

constexpr BusObject kMonitor{"org.gnome.Mutter.IdleMonitor", "/org/gnome/Mutter/IdleMonitor/Core",
                             "org.gnome.Mutter.IdleMonitor"};
constexpr std::chrono::seconds kPause{1};

// Under Wayland the session ends with the shell; on X11 another shell may take its place.
bool isCompositor() { return std::getenv("WAYLAND_DISPLAY") != nullptr; }

}  // namespace

std::unique_ptr<IdleSource> MutterIdle::open(EventLoop& loop, Bus& bus, std::chrono::milliseconds time,
                                             IdleListener& listener) {
    if (!bus.hasOwner(kMonitor.name)) return nullptr;
    return std::unique_ptr<IdleSource>(new MutterIdle(loop, bus, time, listener));
}

MutterIdle::MutterIdle(EventLoop& loop, Bus& bus, std::chrono::milliseconds time, IdleListener& listener)
    : mBus(bus), mTime(time), mListener(listener), mRetry(loop, [this] { watchIdle(); }) {
    const std::string name = kMonitor.name;
    bus.onSignal("type='signal',interface='" + name + "',member='WatchFired'",
                 [this](sd_bus_message* signal) { watchFired(numberIn(signal)); });
    // A shell that starts again knows of no watch.
    bus.onSignal("type='signal',sender='org.freedesktop.DBus',member='NameOwnerChanged',arg0='" + name + "'",
                 [this, &loop](sd_bus_message*) {
                     mListener.becameActive();
                     if (isCompositor() && !mBus.hasOwner(kMonitor.name))
                         return loop.fail("the Wayland compositor has gone");
                     watchIdle();
                 });
    watchIdle();
}

void MutterIdle::watchIdle() {
    const auto milliseconds = static_cast<std::uint64_t>(mTime.count());
    mIdleWatch = numberIn(mBus.call(kMonitor, "AddIdleWatch", "t", milliseconds).get());
    if (mIdleWatch == 0 && mBus.hasOwner(kMonitor.name)) mRetry.start(kPause);
}

void MutterIdle::watchFired(std::uint32_t watch) {
    if (watch == mIdleWatch) {
        mActiveWatch = numberIn(mBus.call(kMonitor, "AddUserActiveWatch").get());
        mListener.becameIdle();
    } else if (watch == mActiveWatch) {
        mListener.becameActive();
    }
}
