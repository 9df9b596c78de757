#include "platform/linux/desktop/Monitors.h"

#include <string_view>

#include "platform/linux/CurrentDesktop.h"
#include "platform/linux/desktop/SessionBus.h"

namespace platform {

namespace {

// Such as HDMI-1; null if the desktop does not say. GTK 3 has no other way to ask.
GText connectorOf(GdkMonitor* monitor) {
    G_GNUC_BEGIN_IGNORE_DEPRECATIONS
    return GText(gdk_screen_get_monitor_plug_name(gdk_screen_get_default(), numberOf(monitor)));
    G_GNUC_END_IGNORE_DEPRECATIONS
}

}  // namespace

int numberOf(GdkMonitor* monitor) {
    GdkDisplay* display = gdk_monitor_get_display(monitor);
    const int count = gdk_display_get_n_monitors(display);
    int number = 0;
    while (number < count && gdk_display_get_monitor(display, number) != monitor) ++number;
    return number;
}

GdkRectangle areaOf(GdkMonitor* monitor) {
    GdkRectangle area;
    gdk_monitor_get_geometry(monitor, &area);
    return area;
}

bool isActive(GdkMonitor* monitor) {
    if (!currentDesktopIs("KDE")) return true;
    const GText own = connectorOf(monitor);
    if (!own) return true;
    const Reply reply =
        callService("org.kde.KWin", "/KWin", "org.kde.KWin", "activeOutputName", g_variant_new("()"));
    if (!reply || !g_variant_is_of_type(reply.get(), G_VARIANT_TYPE("(s)"))) return true;
    const char* active;
    g_variant_get(reply.get(), "(&s)", &active);
    return std::string_view(own.get()) == active;
}

}  // namespace platform
