#include "program/DesktopBlanking.h"

#include <X11/Xlib.h>
#include <gio/gio.h>

#include <cstdlib>
#include <string_view>

#include "platform/linux/CurrentDesktop.h"
#include "platform/linux/Handles.h"

using platform::currentDesktopIs, platform::Handle, platform::KeyFileRef, platform::ObjectRef,
    platform::toString, platform::GText;

namespace {

constexpr double kSecondsPerMinute = 60;

std::string_view variable(const char* name) {
    const char* value = std::getenv(name);
    return value ? value : "";
}

std::optional<DesktopBlanking> gnomeBlanking() {
    constexpr char kSchema[] = "org.gnome.desktop.session";
    const Handle<GSettingsSchema, g_settings_schema_unref> schema(
        g_settings_schema_source_lookup(g_settings_schema_source_get_default(), kSchema, TRUE));
    if (!schema) return std::nullopt;
    const ObjectRef<GSettings> settings(g_settings_new(kSchema));
    const guint seconds = g_settings_get_uint(settings.get(), "idle-delay");
    if (seconds == 0) return std::nullopt;
    return DesktopBlanking{"GNOME blanks and locks the screen", seconds / kSecondsPerMinute,
                           "gsettings set org.gnome.desktop.session idle-delay 1800"};
}

bool isFalse(GKeyFile* file, const char* group, const char* key) {
    return toString(GText(g_key_file_get_value(file, group, key, nullptr))) == "false";
}

std::optional<DesktopBlanking> plasmaBlanking() {
    constexpr char kGroup[] = "Daemon";
    constexpr int kDefaultMinutes = 5;
    const KeyFileRef file(g_key_file_new());
    const std::string path = std::string(g_get_user_config_dir()) + "/kscreenlockerrc";
    g_key_file_load_from_file(file.get(), path.c_str(), G_KEY_FILE_NONE, nullptr);
    if (isFalse(file.get(), kGroup, "Autolock")) return std::nullopt;
    const int minutes = g_key_file_get_integer(file.get(), kGroup, "Timeout", nullptr);
    const std::string version = variable("KDE_SESSION_VERSION") == "6" ? "6" : "5";
    return DesktopBlanking{
        "KDE locks the screen", minutes > 0 ? minutes : kDefaultMinutes * 1.0,
        "kwriteconfig" + version + " --file kscreenlockerrc --group Daemon --key Timeout 30"};
}

std::optional<DesktopBlanking> serverBlanking() {
    const Handle<Display, XCloseDisplay> display(XOpenDisplay(nullptr));
    if (!display) return std::nullopt;
    int seconds = 0, interval, prefersBlanking, allowsExposures;
    XGetScreenSaver(display.get(), &seconds, &interval, &prefersBlanking, &allowsExposures);
    if (seconds <= 0) return std::nullopt;
    return DesktopBlanking{"The X server blanks the screen", seconds / kSecondsPerMinute, "xset s off -dpms"};
}

}  // namespace

std::optional<DesktopBlanking> desktopBlanking() {
    if (currentDesktopIs("GNOME")) return gnomeBlanking();
    if (currentDesktopIs("KDE")) return plasmaBlanking();
    return variable("WAYLAND_DISPLAY").empty() ? serverBlanking() : std::nullopt;
}
