#include "platform/linux/desktop/ScreenAwake.h"

#include <X11/extensions/scrnsaver.h>
#include <gdk/gdkwayland.h>
#include <gdk/gdkx.h>

#include <cstring>

#include <idle-inhibit-unstable-v1-client.h>  // generated
#include "platform/Log.h"
#include "platform/linux/desktop/SessionBus.h"

namespace platform {

namespace {

constexpr char kName[] = "org.tellmar.Tellmar", kReason[] = "Shows earthquakes";
constexpr unsigned kNoWindow = 0, kIdle = 8;  // GNOME's flag for "the session is not idle"

void suspendServersSaver(bool isSuspended) {
    GdkDisplay* display = gdk_display_get_default();
    if (!GDK_IS_X11_DISPLAY(display)) return;
    ::Display* server = GDK_DISPLAY_XDISPLAY(display);
    int event = 0, error = 0;
    if (!XScreenSaverQueryExtension(server, &event, &error)) return;
    XScreenSaverSuspend(server, isSuspended);
    if (isSuspended) XForceScreenSaver(server, ScreenSaverReset);
    XSync(server, False);
}

bool inhibitOnBus() {
    return callService("org.gnome.SessionManager", "/org/gnome/SessionManager", "org.gnome.SessionManager",
                       "Inhibit", g_variant_new("(susu)", kName, kNoWindow, kReason, kIdle)) ||
           callService("org.freedesktop.ScreenSaver", "/org/freedesktop/ScreenSaver",
                       "org.freedesktop.ScreenSaver", "Inhibit", g_variant_new("(ss)", kName, kReason));
}

// The compositor's manager of inhibitors; null when it has none.
zwp_idle_inhibit_manager_v1* inhibitManager(wl_display* display) {
    static zwp_idle_inhibit_manager_v1* manager = nullptr;  // kept until the process ends
    static const wl_registry_listener listener = {
        .global =
            [](void*, wl_registry* registry, uint32_t name, const char* interface, uint32_t) {
                if (std::strcmp(interface, zwp_idle_inhibit_manager_v1_interface.name) == 0)
                    manager = static_cast<zwp_idle_inhibit_manager_v1*>(
                        wl_registry_bind(registry, name, &zwp_idle_inhibit_manager_v1_interface, 1));
            },
        .global_remove = [](void*, wl_registry*, uint32_t) {}};
    if (manager) return manager;
    wl_event_queue* queue = wl_display_create_queue(display);
    auto* wrapper = static_cast<wl_display*>(wl_proxy_create_wrapper(display));
    wl_proxy_set_queue(reinterpret_cast<wl_proxy*>(wrapper), queue);
    wl_registry* registry = wl_display_get_registry(wrapper);
    wl_proxy_wrapper_destroy(wrapper);
    wl_registry_add_listener(registry, &listener, nullptr);
    wl_display_roundtrip_queue(display, queue);
    if (manager) wl_proxy_set_queue(reinterpret_cast<wl_proxy*>(manager), nullptr);
    wl_registry_destroy(registry);
    wl_event_queue_destroy(queue);
    return manager;
}

// The inhibitor ends with the surface's process.
void inhibitWhileShown(GtkWidget* window) {
    GdkDisplay* display = gtk_widget_get_display(window);
    auto* manager = inhibitManager(gdk_wayland_display_get_wl_display(display));
    wl_surface* surface = gdk_wayland_window_get_wl_surface(gtk_widget_get_window(window));
    if (manager && surface) zwp_idle_inhibit_manager_v1_create_inhibitor(manager, surface);
}

}  // namespace

ScreenAwake::ScreenAwake() : mBus(sessionBus()) {
    suspendServersSaver(true);
    if (mBus && inhibitOnBus()) trace("the desktop keeps the screen on");
}

ScreenAwake::~ScreenAwake() { suspendServersSaver(false); }

void keepAwakeWhileShown(GtkWidget* window) {
    if (GDK_IS_WAYLAND_DISPLAY(gtk_widget_get_display(window)))
        g_signal_connect(window, "map", G_CALLBACK(inhibitWhileShown), nullptr);
}

}  // namespace platform
