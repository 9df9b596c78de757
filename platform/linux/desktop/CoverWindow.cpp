#include "platform/linux/desktop/CoverWindow.h"

#include <gdk/gdkx.h>
#include <gtk-layer-shell.h>

#include <cmath>
#include <initializer_list>

#include "platform/linux/desktop/Monitors.h"

namespace platform {

namespace {

constexpr double kRealMove = 5;  // pixels; anything less may come from a bumped table

constexpr char kMonitorKey[] = "tellmar-monitor";

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

void coverAsLayer(GtkWindow* window, GdkMonitor* monitor, bool takesKeyboard) {
    gtk_layer_init_for_window(window);
    gtk_layer_set_namespace(window, "tellmar");
    gtk_layer_set_layer(window, GTK_LAYER_SHELL_LAYER_OVERLAY);
    gtk_layer_set_monitor(window, monitor);
    for (const auto edge : {GTK_LAYER_SHELL_EDGE_LEFT, GTK_LAYER_SHELL_EDGE_RIGHT, GTK_LAYER_SHELL_EDGE_TOP,
                            GTK_LAYER_SHELL_EDGE_BOTTOM})
        gtk_layer_set_anchor(window, edge, TRUE);
    gtk_layer_set_exclusive_zone(window, -1);  // covers panels, too
    if (takesKeyboard) gtk_layer_set_keyboard_mode(window, GTK_LAYER_SHELL_KEYBOARD_MODE_EXCLUSIVE);
}

void fillMonitor(GtkWindow* window, GdkMonitor* monitor) {
    const GdkRectangle area = areaOf(monitor);
    gtk_window_move(window, area.x, area.y);
    gtk_window_resize(window, area.width, area.height);
}

// No window manager gives a pop-up the keyboard.
void takeFocus(GtkWidget* popup) {
    GdkWindow* own = gtk_widget_get_window(popup);
    GdkDisplay* display = gdk_window_get_display(own);
    gdk_x11_display_error_trap_push(display);
    XSetInputFocus(GDK_DISPLAY_XDISPLAY(display), GDK_WINDOW_XID(own), RevertToPointerRoot, CurrentTime);
    gdk_x11_display_error_trap_pop_ignored(display);
}

// Without a background the server leaves what is there until the window is drawn: no moment of black.
void dropBackground(GtkWidget* popup) {
    GdkWindow* own = gtk_widget_get_window(popup);
    XSetWindowBackgroundPixmap(GDK_WINDOW_XDISPLAY(own), GDK_WINDOW_XID(own), None);
}

void coverAsPopup(GtkWindow* window, GdkMonitor* monitor) {
    fillMonitor(window, monitor);
    g_signal_connect(window, "realize", G_CALLBACK(dropBackground), nullptr);
    g_signal_connect(window, "map-event", G_CALLBACK(takeFocus), nullptr);
    g_signal_connect_object(monitor, "notify::geometry",
                            G_CALLBACK(+[](GdkMonitor* changed, GParamSpec*, gpointer popup) {
                                fillMonitor(GTK_WINDOW(popup), changed);
                            }),
                            window, static_cast<GConnectFlags>(0));
}

void makeFullScreen(GtkWindow* window) {
    auto* monitor = static_cast<GdkMonitor*>(g_object_get_data(G_OBJECT(window), kMonitorKey));
    const int number = numberOf(monitor);
    if (number < gdk_display_get_n_monitors(gdk_monitor_get_display(monitor)))
        gtk_window_fullscreen_on_monitor(window, gdk_screen_get_default(), number);
}

// Whenever any monitor changes, GNOME Shell moves the window to the one where it put it at first.
void coverAsFullScreen(GtkWindow* window, GdkMonitor* monitor) {
    g_object_set_data_full(G_OBJECT(window), kMonitorKey, g_object_ref(monitor), g_object_unref);
    gtk_window_set_decorated(window, FALSE);  // not every compositor reports the full-screen state
    makeFullScreen(window);
    const auto follow = [window](gpointer source, const char* change) {
        g_signal_connect_object(source, change, G_CALLBACK(makeFullScreen), window, G_CONNECT_SWAPPED);
    };
    follow(gdk_screen_get_default(), "monitors-changed");
    follow(monitor, "notify::scale-factor");
}

}  // namespace

GtkWidget* createCoverWindow(GdkMonitor* monitor, bool takesKeyboard) {
    const bool isX11 = GDK_IS_X11_DISPLAY(gdk_monitor_get_display(monitor));
    GtkWidget* widget = gtk_window_new(isX11 ? GTK_WINDOW_POPUP : GTK_WINDOW_TOPLEVEL);
    GtkWindow* window = GTK_WINDOW(widget);
    gtk_window_set_title(window, "Tellmar");
    const GdkRectangle area = areaOf(monitor);
    gtk_window_set_default_size(window, area.width, area.height);  // so that it need not change on the screen
    if (isX11)
        coverAsPopup(window, monitor);
    else if (gtk_layer_is_supported())
        coverAsLayer(window, monitor, takesKeyboard);
    else
        coverAsFullScreen(window, monitor);
    return widget;
}

void onAnyInput(GtkWidget* window, void (*action)()) {
    gtk_widget_add_events(window, GDK_KEY_PRESS_MASK | GDK_BUTTON_PRESS_MASK | GDK_SCROLL_MASK |
                                      GDK_TOUCH_MASK | GDK_ENTER_NOTIFY_MASK | GDK_POINTER_MOTION_MASK);
    g_signal_connect(window, "event", G_CALLBACK(passOn), reinterpret_cast<gpointer>(action));
}

}  // namespace platform
