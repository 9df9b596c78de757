#include "platform/linux/desktop/LostBuses.h"

#include <gio/gio.h>
#include <unistd.h>

#include <string>
#include <string_view>

#include "platform/linux/Handles.h"

namespace platform {

namespace {

constexpr char kSessionBus[] = "DBUS_SESSION_BUS_ADDRESS";
constexpr char kAccessibilityBus[] = "AT_SPI_BUS_ADDRESS";

// Of the form unix:path=/run/user/1000/bus,guid=0123
bool isLost(std::string_view address) {
    constexpr std::string_view kPath = "unix:path=";
    if (!address.starts_with(kPath)) return false;
    address.remove_prefix(kPath.size());
    return access(std::string(address.substr(0, address.find_first_of(",;"))).c_str(), F_OK) != 0;
}

void replaceIfLost(const char* variable, const std::string& address) {
    if (isLost(address)) g_setenv(variable, "disabled:", TRUE);
}

std::string valueOf(const char* variable) {
    const char* const value = g_getenv(variable);
    return value ? value : "";
}

std::string accessibilityBusOfSession() {
    constexpr int kPatience = 2000;  // milliseconds
    const ObjectRef<GDBusConnection> bus(g_bus_get_sync(G_BUS_TYPE_SESSION, nullptr, nullptr));
    if (!bus) return {};
    const Handle<GVariant, g_variant_unref> answer(g_dbus_connection_call_sync(
        bus.get(), "org.a11y.Bus", "/org/a11y/bus", "org.a11y.Bus", "GetAddress", nullptr,
        G_VARIANT_TYPE("(s)"), G_DBUS_CALL_FLAGS_NONE, kPatience, nullptr, nullptr));
    const char* address = "";
    if (answer) g_variant_get(answer.get(), "(&s)", &address);
    return address;
}

// WebKit looks for it in the same places, in this order.
std::string accessibilityBus() {
    const std::string address = valueOf(kAccessibilityBus);
    return address.empty() ? accessibilityBusOfSession() : address;
}

}  // namespace

void replaceLostBuses() {
    replaceIfLost(kSessionBus, valueOf(kSessionBus));
    replaceIfLost(kAccessibilityBus, accessibilityBus());
}

}  // namespace platform
