#include "platform/Alert.h"

#include <gtk/gtk.h>

#include <csignal>
#include <cstdio>

#include "platform/Log.h"
#include "platform/RunLoop.h"
#include "platform/linux/Handles.h"
#include "platform/linux/desktop/Window.h"

namespace platform {

namespace {

constexpr double kNoticeSeconds = 15;

void showDialog(AlertType type, const std::string& text, const std::string& explanation) {
    Window* owner = Window::current();
    GtkWidget* dialog =
        gtk_message_dialog_new(owner ? owner->gtkWindow() : nullptr, GTK_DIALOG_MODAL,
                               type == AlertType::Caution ? GTK_MESSAGE_WARNING : GTK_MESSAGE_ERROR,
                               GTK_BUTTONS_OK, "%s", text.c_str());
    gtk_message_dialog_format_secondary_text(GTK_MESSAGE_DIALOG(dialog), "%s", explanation.c_str());
    gtk_window_set_title(GTK_WINDOW(dialog), "Tellmar");
    bool seen = false;
    g_signal_connect_swapped(dialog, "response",
                             G_CALLBACK(+[](gpointer flag) { *static_cast<bool*>(flag) = true; }), &seen);
    // Escape and the close button respond as well; without this they would also destroy the dialog.
    g_signal_connect(dialog, "delete-event", G_CALLBACK(gtk_widget_hide_on_delete), nullptr);
    gtk_widget_show_all(dialog);
    RunLoop::runUntil([&] { return seen; });
    gtk_widget_destroy(dialog);
}

// Alert texts are cut at a number of bytes, which can split a character.
std::string wholeCharacters(const std::string& text) {
    const GText valid(g_utf8_make_valid(text.data(), static_cast<gssize>(text.size())));
    return valid.get();
}

}  // namespace

void standardAlert(AlertType type, const std::string& rawText, const std::string& rawExplanation) {
    const std::string text = wholeCharacters(rawText);
    const std::string explanation = wholeCharacters(rawExplanation);
    log(text);
    std::fputs(explanation.c_str(), stderr);
    if (!gdk_display_get_default()) return;
    Window* window = Window::current();
    if (!window || window->takesDialogs())
        showDialog(type, text, explanation);
    else
        window->showNotice(text, explanation, kNoticeSeconds);
}

void beep() {
    if (GdkDisplay* display = gdk_display_get_default()) gdk_display_beep(display);
}

void debugger() { std::raise(SIGTRAP); }

void debugStr(const std::string& text) {
    log(text);
    debugger();
}

}  // namespace platform
