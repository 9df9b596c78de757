#include "program/AutostartEntry.h"

#include <glib.h>

#include <cerrno>
#include <cstdio>
#include <filesystem>

#include "platform/Files.h"
#include "platform/linux/Handles.h"

using platform::GText, platform::KeyFileRef;

namespace {

constexpr char kGroup[] = G_KEY_FILE_DESKTOP_GROUP;
constexpr char kMinutes[] = "X-Tellmar-Minutes";

// As a desktop entry's command line wants it.
std::string quoted(const std::string& argument) {
    std::string result = "\"";
    for (const char c : argument) {
        if (std::string_view("\"`$\\").find(c) != std::string_view::npos) result += '\\';
        result += c;
        if (c == '%') result += '%';
    }
    return result + '"';
}

}  // namespace

AutostartEntry::AutostartEntry()
    : mPath(std::string(g_get_user_config_dir()) + "/autostart/tellmar-idle.desktop") {}

std::string AutostartEntry::minutes() const {
    const KeyFileRef file(g_key_file_new());
    g_key_file_load_from_file(file.get(), mPath.c_str(), G_KEY_FILE_NONE, nullptr);
    return toString(GText(g_key_file_get_string(file.get(), kGroup, kMinutes, nullptr)));
}

bool AutostartEntry::write(const std::string& waiter, const std::string& minutes) const {
    const KeyFileRef file(g_key_file_new());
    const auto set = [&file](const char* key, const std::string& value) {
        g_key_file_set_string(file.get(), kGroup, key, value.c_str());
    };
    set("Type", "Application");
    set("Name", "Tellmar");
    set("Comment", "Show earthquakes on maps while nobody uses the computer");
    set("Exec", quoted(waiter) + " " + minutes);
    set("TryExec", waiter);
    set("Icon", "org.tellmar.Tellmar");
    set("NotShowIn", "MATE;XFCE;");  // they have screen savers of their own
    set(kMinutes, minutes);

    std::error_code error;
    std::filesystem::create_directories(std::filesystem::path(mPath).parent_path(), error);
    const GText text(g_key_file_to_data(file.get(), nullptr, nullptr));
    return !error && platform::writeFileAtomically(mPath, text.get());
}

bool AutostartEntry::remove() const { return std::remove(mPath.c_str()) == 0 || errno == ENOENT; }
