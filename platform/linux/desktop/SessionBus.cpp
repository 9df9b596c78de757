#include "platform/linux/desktop/SessionBus.h"

#include <cstdlib>
#include <filesystem>

namespace platform {

namespace {

constexpr int kTimeout = 1000;  // milliseconds

// Without an address GIO would start a bus.
bool hasAddress() {
    std::error_code error;
    return std::getenv("DBUS_SESSION_BUS_ADDRESS") ||
           std::filesystem::exists(std::string(g_get_user_runtime_dir()) + "/bus", error);
}

}  // namespace

ObjectRef<GDBusConnection> sessionBus() {
    if (!hasAddress()) return nullptr;
    ObjectRef<GDBusConnection> bus(g_bus_get_sync(G_BUS_TYPE_SESSION, nullptr, nullptr));
    if (bus) g_dbus_connection_set_exit_on_close(bus.get(), FALSE);
    return bus;
}

Reply callService(const char* name, const char* path, const char* interface, const char* method,
                  GVariant* parameters) {
    const Reply owned(g_variant_ref_sink(parameters));
    const auto bus = sessionBus();
    if (!bus) return nullptr;
    return Reply(g_dbus_connection_call_sync(bus.get(), name, path, interface, method, parameters, nullptr,
                                             G_DBUS_CALL_FLAGS_NO_AUTO_START, kTimeout, nullptr, nullptr));
}

void closeOverview() {
    callService("org.gnome.Shell", "/org/gnome/Shell", "org.freedesktop.DBus.Properties", "Set",
                g_variant_new("(ssv)", "org.gnome.Shell", "OverviewActive", g_variant_new_boolean(FALSE)));
}

}  // namespace platform
