#include "platform/linux/desktop/LayerWindow.h"

#include <gdk/gdkwayland.h>
#include <gtk-layer-shell.h>

#include <cmath>
#include <initializer_list>

namespace platform {

namespace {

constexpr double kRealMove = 5;  // pixels; anything less may come from a bumped table

using Action = void (*)();

// Measured from where the pointer entered the window.
bool hasMoved(const GdkEvent* event) {
    static double startX, startY;
    double x = 0, y = 0;
    gdk_event_get_coords(event, &x, &y);
    if (event->type == GDK_ENTER_NOTIFY) startX = x, startY = y;
    return std::hypot(x - startX, y - startY) >= kRealMove;
}

gboolean passOn(GtkWidget*, GdkEvent* event, gpointer action) {
    switch (event->type) {
        case GDK_ENTER_NOTIFY:
        case GDK_MOTION_NOTIFY:
            if (!hasMoved(event)) return FALSE;
            [[fallthrough]];
        case GDK_KEY_PRESS:
        case GDK_BUTTON_PRESS:
        case GDK_SCROLL:
        case GDK_TOUCH_BEGIN:
            reinterpret_cast<Action>(action)();
            return TRUE;
        default:
            return FALSE;
    }
}

}  // namespace

bool hasLayers() { return GDK_IS_WAYLAND_DISPLAY(gdk_display_get_default()) && gtk_layer_is_supported(); }

void coverAsLayer(GtkWindow* window, GdkMonitor* monitor) {
    gtk_layer_init_for_window(window);
    gtk_layer_set_namespace(window, "tellmar");
    gtk_layer_set_layer(window, GTK_LAYER_SHELL_LAYER_OVERLAY);
    gtk_layer_set_monitor(window, monitor);
    for (const auto edge : {GTK_LAYER_SHELL_EDGE_LEFT, GTK_LAYER_SHELL_EDGE_RIGHT, GTK_LAYER_SHELL_EDGE_TOP,
                            GTK_LAYER_SHELL_EDGE_BOTTOM})
        gtk_layer_set_anchor(window, edge, TRUE);
    gtk_layer_set_exclusive_zone(window, -1);  // covers panels, too
    gtk_layer_set_keyboard_mode(window, GTK_LAYER_SHELL_KEYBOARD_MODE_EXCLUSIVE);
}

void onAnyInput(GtkWidget* window, void (*action)()) {
    gtk_widget_add_events(window, GDK_KEY_PRESS_MASK | GDK_BUTTON_PRESS_MASK | GDK_SCROLL_MASK |
                                      GDK_TOUCH_MASK | GDK_ENTER_NOTIFY_MASK | GDK_POINTER_MOTION_MASK);
    g_signal_connect(window, "event", G_CALLBACK(passOn), reinterpret_cast<gpointer>(action));
}

}  // namespace platform
