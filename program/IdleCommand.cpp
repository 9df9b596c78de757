#include "program/IdleCommand.h"

#include <gio/gio.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>

#include "idle/IdleTime.h"
#include "idle/SessionName.h"
#include "platform/Log.h"
#include "platform/linux/desktop/SessionBus.h"
#include "program/AutostartEntry.h"
#include "program/DesktopBlanking.h"

using platform::Handle, platform::ObjectRef;

namespace {

namespace fs = std::filesystem;

constexpr char kSwitchOn[] = "tellmar --idle 3";
constexpr char kSwitchOff[] = "tellmar --idle off";

// The waiter beside this program, or else the installed one.
std::string waiterProgram() {
    std::error_code error;
    const fs::path beside = fs::read_symlink("/proc/self/exe", error).parent_path() / "tellmar-idle";
    return fs::exists(beside, error) ? beside.string() : TELLMAR_IDLE_PROGRAM;
}

bool hasDisplay() { return std::getenv("WAYLAND_DISPLAY") || std::getenv("DISPLAY"); }

// Does not end with the terminal.
void leaveTerminal(gpointer) { setsid(); }

// Whether the waiter now waits; otherwise it has said why not. With 0 minutes it only ends the one that runs.
bool startWaiter(const std::string& minutes) {
    const std::string program = waiterProgram();
    const ObjectRef<GSubprocessLauncher> launcher(g_subprocess_launcher_new(G_SUBPROCESS_FLAGS_STDOUT_PIPE));
    g_subprocess_launcher_set_child_setup(launcher.get(), leaveTerminal, nullptr, nullptr);
    GError* error = nullptr;
    const ObjectRef<GSubprocess> waiter(
        g_subprocess_launcher_spawn(launcher.get(), &error, program.c_str(), minutes.c_str(), nullptr));
    if (const platform::ErrorRef owned(error); owned) platform::log(owned->message);
    if (!waiter) return false;
    char byte;
    return g_input_stream_read(g_subprocess_get_stdout_pipe(waiter.get()), &byte, 1, nullptr, nullptr) > 0;
}

bool waiterRuns() {
    const std::string name = sessionName();
    const auto reply =
        platform::callService("org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus",
                              "NameHasOwner", g_variant_new("(s)", name.c_str()));
    gboolean runs = FALSE;
    if (reply) g_variant_get(reply.get(), "(b)", &runs);
    return runs;
}

void notify(const std::string& text) {
    constexpr char kName[] = "org.freedesktop.Notifications", kPath[] = "/org/freedesktop/Notifications";
    constexpr int kTimeout = 5000;  // milliseconds; the bus may have to start the service
    GVariant* notice =
        g_variant_ref_sink(g_variant_new("(susssasa{sv}i)", "Tellmar", 0u, "org.tellmar.Tellmar", "Tellmar",
                                         text.c_str(), nullptr, nullptr, -1));
    if (const auto bus = platform::sessionBus())
        platform::Reply(g_dbus_connection_call_sync(bus.get(), kName, kPath, kName, "Notify", notice, nullptr,
                                                    G_DBUS_CALL_FLAGS_NONE, kTimeout, nullptr, nullptr));
    g_variant_unref(notice);
}

// Who started the command from a menu sees a notification.
void say(const std::string& text) {
    std::puts(text.c_str());
    std::fflush(stdout);
    if (!isatty(STDIN_FILENO) && !isatty(STDOUT_FILENO)) notify(text);
}

std::string inMinutes(double number) {
    char text[32];
    std::snprintf(text, sizeof text, "%g minute%s", number, number == 1 ? "" : "s");
    return text;
}

// When the desktop blanks the screen, over Tellmar or before it starts.
std::string advice(double minutes) {
    const auto blanking = desktopBlanking();
    if (!blanking) return "";
    const std::string effect = blanking->minutes > minutes ? "" : ", before Tellmar starts";
    return "\n" + blanking->what + " after " + inMinutes(blanking->minutes) + effect +
           ". To change that:\n    " + blanking->command;
}

double number(const std::string& minutes) { return std::strtod(minutes.c_str(), nullptr); }

std::string promise(const std::string& minutes) {
    return "Tellmar starts after " + inMinutes(number(minutes)) + " without input";
}

int switchOn(const std::string& minutes) {
    const AutostartEntry entry;
    if (!entry.write(waiterProgram(), minutes)) {
        platform::log(entry.path() + " cannot be written; nothing was changed");
        return 1;
    }
    if (hasDisplay() && !startWaiter(minutes)) {
        entry.remove();
        platform::log("nothing waits for an idle session, now or later");
        return 1;
    }
    say(promise(minutes) + (hasDisplay() ? ", now and in later sessions." : ", from your next session on.") +
        advice(number(minutes)) + "\nTo switch it off: " + kSwitchOff);
    return 0;
}

int switchOff() {
    const AutostartEntry entry;
    const bool wasOn = !entry.minutes().empty() || waiterRuns();
    if (!entry.remove()) {
        platform::log(entry.path() + " cannot be removed");
        return 1;
    }
    if (waiterRuns()) startWaiter("0");
    say(wasOn ? "Tellmar no longer starts by itself."
              : "Tellmar did not start by itself; nothing was changed.");
    return 0;
}

int reportState() {
    const std::string minutes = AutostartEntry().minutes();
    if (minutes.empty())
        say(std::string(waiterRuns() ? "Tellmar starts by itself in this session only."
                                     : "Tellmar does not start by itself.") +
            "\nTo switch it on: " + kSwitchOn);
    else
        say(promise(minutes) + (waiterRuns() ? "." : ", but not in this session.") + advice(number(minutes)) +
            "\nTo switch it off: " + kSwitchOff);
    return 0;
}

}  // namespace

int runIdleCommand(const std::string& value) {
    if (value.empty()) return reportState();
    return value == "off" ? switchOff() : switchOn(value);
}
