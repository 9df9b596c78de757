#include "platform/ConfigPanel.h"

#include <gtk/gtk.h>

#include "platform/Bundle.h"
#include "platform/RunLoop.h"
#include "platform/linux/Handles.h"

namespace platform {

// The core's names for GTK's objects. No instance of these classes ever exists.
class Panel {};
class Slider {};
class Button {};

namespace {

template <typename Control>
Control* control(GtkBuilder* builder, const char* id) {
    return reinterpret_cast<Control*>(gtk_builder_get_object(builder, id));
}

// The action that a button sends; owned by the button.
struct Action {
    std::function<void(Button*)> send;
};

void connectAction(Button* button, const std::function<void(Button*)>& send) {
    g_signal_connect_data(
        reinterpret_cast<GtkButton*>(button), "clicked", G_CALLBACK(+[](GtkButton* sender, gpointer action) {
            static_cast<Action*>(action)->send(reinterpret_cast<Button*>(sender));
        }),
        new Action{send}, [](gpointer action, GClosure*) { delete static_cast<Action*>(action); },
        static_cast<GConnectFlags>(0));
}

}  // namespace

int intValue(const Slider* slider) {
    return static_cast<int>(
        gtk_range_get_value(const_cast<GtkRange*>(reinterpret_cast<const GtkRange*>(slider))));
}

bool loadNibNamed(const std::string& name, const SheetConnections& owner) {
    const std::string path = pathForResource(name + ".ui");
    const ObjectRef<GtkBuilder> builder(gtk_builder_new());
    if (path.empty() || !gtk_builder_add_from_file(builder.get(), path.c_str(), nullptr)) return false;

    auto* panel = control<Panel>(builder.get(), "mConfigPanel");
    auto* zoom = control<Slider>(builder.get(), "mZoomSlider");
    auto* rate = control<Slider>(builder.get(), "mRateSlider");
    auto* ok = control<Button>(builder.get(), "mOKButton");
    auto* cancel = control<Button>(builder.get(), "mCancelButton");
    if (!panel || !zoom || !rate || !ok || !cancel) return false;

    connectAction(ok, owner.closeSheetSave);
    connectAction(cancel, owner.closeSheetCancel);
    // Closing the window cancels; the window is kept for the next time.
    g_signal_connect_swapped(panel, "delete-event", G_CALLBACK(+[](gpointer button) -> gboolean {
                                 gtk_button_clicked(static_cast<GtkButton*>(button));
                                 return TRUE;
                             }),
                             cancel);
    owner.configPanel = panel;
    owner.zoomSlider = zoom;
    owner.rateSlider = rate;
    owner.okButton = ok;
    owner.cancelButton = cancel;
    return true;
}

void endSheet(Panel* panel) {
    if (panel) gtk_widget_hide(reinterpret_cast<GtkWidget*>(panel));
}

void runSheet(Panel* panel) {
    auto* window = reinterpret_cast<GtkWidget*>(panel);
    gtk_window_present(GTK_WINDOW(window));
    RunLoop::runUntil([window] { return !gtk_widget_get_visible(window); });
}

}  // namespace platform
