#include "idle/LockWatch.h"

#include <utility>

LockWatch::LockWatch(Bus& bus, std::function<void()> onChange) : mOnChange(std::move(onChange)) {
    if (!bus.isOpen()) return;
    sd_bus_track* lockers = nullptr;
    sd_bus_track_new(bus.handle(), &lockers, nullptr, nullptr);
    mLockers.reset(lockers);
    bus.onSignal("type='signal',member='ActiveChanged'",
                 [this](sd_bus_message* signal) { activeChanged(signal); });
}

bool LockWatch::isLocked() const { return mLockers && sd_bus_track_count(mLockers.get()) > 0; }

void LockWatch::activeChanged(sd_bus_message* signal) {
    if (!sd_bus_message_has_signature(signal, "b")) return;
    if (booleanIn(signal))
        sd_bus_track_add_sender(mLockers.get(), signal);
    else
        sd_bus_track_remove_sender(mLockers.get(), signal);
    mOnChange();
}
