#include "platform/linux/desktop/Monitors.h"

namespace platform {

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

}  // namespace platform
