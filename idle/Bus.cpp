#include "idle/Bus.h"

#include <utility>

namespace {

constexpr BusObject kDaemon{"org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus"};
constexpr std::uint64_t kMaxWait = 5'000'000;  // microseconds; a shell that is just starting is slow

// Null when there is no bus or it does not answer.
sd_bus* openBus() {
    sd_bus* bus = nullptr;
    const char* name = nullptr;
    if (sd_bus_open_user(&bus) >= 0 && sd_bus_get_unique_name(bus, &name) >= 0) return bus;
    return sd_bus_unref(bus);
}

}  // namespace

Bus::Bus(EventLoop& loop) : mBus(openBus()) {
    if (!isOpen()) return;
    sd_bus_set_method_call_timeout(handle(), kMaxWait);
    sd_bus_attach_event(handle(), loop.handle(), SD_EVENT_PRIORITY_NORMAL);
    onSignal("type='signal',interface='org.freedesktop.DBus.Local',member='Disconnected'",
             [&loop](sd_bus_message*) { loop.fail("the session bus has gone"); });
}

bool Bus::takeName(const std::string& name, std::function<void()> onLost) {
    constexpr auto kReplaceable = SD_BUS_NAME_ALLOW_REPLACEMENT | SD_BUS_NAME_REPLACE_EXISTING;
    if (!isOpen() || sd_bus_request_name(handle(), name.c_str(), kReplaceable) < 0) return false;
    onSignal("type='signal',sender='org.freedesktop.DBus',member='NameLost',arg0='" + name + "'",
             [onLost = std::move(onLost)](sd_bus_message*) { onLost(); });
    return true;
}

bool Bus::hasOwner(const char* name) { return booleanIn(call(kDaemon, "NameHasOwner", "s", name).get()); }

void Bus::onSignal(const std::string& rule, std::function<void(sd_bus_message*)> handler) {
    if (!isOpen()) return;
    mHandlers.push_back(std::move(handler));
    sd_bus_add_match(handle(), nullptr, rule.c_str(), handle, &mHandlers.back());
}

int Bus::handle(sd_bus_message* message, void* handler, sd_bus_error*) {
    (*static_cast<std::function<void(sd_bus_message*)>*>(handler))(message);
    return 0;
}

bool booleanIn(sd_bus_message* message) {
    int value = 0;
    return message && sd_bus_message_read(message, "b", &value) > 0 && value;
}

std::uint32_t numberIn(sd_bus_message* message) {
    std::uint32_t value = 0;
    return message && sd_bus_message_read(message, "u", &value) > 0 ? value : 0;
}
