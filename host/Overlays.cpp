#include "host/Overlays.h"

#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <map>
#include <string>
#include <vector>

#include "platform/linux/system/RunLoop.h"

using platform::RunLoop;

namespace {

// Names the monitor to the process that covers it: its number among the display's. Every process counts
// monitors in the order of their coming; their places may change while they come.
constexpr char kVariable[] = "TELLMAR_MONITOR";

std::string numberOf(GdkMonitor* monitor) {
    GdkDisplay* display = gdk_monitor_get_display(monitor);
    int number = 0;
    while (number < gdk_display_get_n_monitors(display) &&
           gdk_display_get_monitor(display, number) != monitor)
        ++number;
    return std::to_string(number);
}

std::vector<std::string> ownArguments() {
    std::ifstream file("/proc/self/cmdline", std::ios::binary);
    std::vector<std::string> arguments;
    for (std::string argument; std::getline(file, argument, '\0');) arguments.push_back(argument);
    return arguments;
}

// A process that covers a monitor must not outlive the first one.
void followParent(gpointer) { prctl(PR_SET_PDEATHSIG, SIGTERM); }

// The process for the monitor of this number; 0 when none can be started.
pid_t startOverlay(const std::string& monitor) {
    std::vector<std::string> arguments = ownArguments();
    std::vector<char*> pointers;
    for (std::string& argument : arguments) pointers.push_back(argument.data());
    pointers.push_back(nullptr);

    gchar** environment = g_environ_setenv(g_get_environ(), kVariable, monitor.c_str(), TRUE);
    GError* error = nullptr;
    GPid process = 0;
    // The program's own file, not the name that it was called by.
    pointers.insert(pointers.begin(), const_cast<char*>("/proc/self/exe"));
    g_spawn_async(nullptr, pointers.data(), environment,
                  static_cast<GSpawnFlags>(G_SPAWN_DO_NOT_REAP_CHILD | G_SPAWN_FILE_AND_ARGV_ZERO),
                  followParent, nullptr, &process, &error);
    g_strfreev(environment);
    if (error) std::fprintf(stderr, "tellmar: %s\n", error->message);
    g_clear_error(&error);
    return process;
}

// The first process's view of the others.
class Overlays {
  public:
    Overlays() {
        GdkDisplay* display = gdk_display_get_default();
        g_signal_connect_swapped(display, "monitor-added", G_CALLBACK(cover), this);
        g_signal_connect_swapped(display, "monitor-removed", G_CALLBACK(uncover), this);
        for (int i = 0; i < gdk_display_get_n_monitors(display); ++i)
            cover(this, gdk_display_get_monitor(display, i));
    }

    ~Overlays() {
        g_signal_handlers_disconnect_by_data(gdk_display_get_default(), this);
        for (const auto& [monitor, process] : mProcesses) kill(process, SIGTERM);
        for (const auto& [monitor, process] : mProcesses) waitpid(process, nullptr, 0);
    }
    Overlays(const Overlays&) = delete;
    Overlays& operator=(const Overlays&) = delete;

  private:
    static void cover(Overlays* self, GdkMonitor* monitor) {
        const pid_t process = startOverlay(numberOf(monitor));
        if (process == 0) return;
        self->mProcesses[monitor] = process;
        g_child_watch_add(
            process,
            [](GPid ended, gint, gpointer overlays) { static_cast<Overlays*>(overlays)->forget(ended); },
            self);
    }

    static void uncover(Overlays* self, GdkMonitor* monitor) {
        const auto found = self->mProcesses.find(monitor);
        if (found != self->mProcesses.end()) kill(found->second, SIGTERM);
    }

    // One whose monitor has gone ends as well, maybe before this process hears of that. But when none is left
    // although there are monitors, there is nothing to wait for.
    void forget(pid_t ended) {
        std::erase_if(mProcesses, [ended](const auto& each) { return each.second == ended; });
        if (mProcesses.empty()) g_timeout_add_seconds(1, endWithoutOverlays, this);
    }

    static gboolean endWithoutOverlays(gpointer self) {
        const bool isNeeded = gdk_display_get_n_monitors(gdk_display_get_default()) > 0;
        if (static_cast<Overlays*>(self)->mProcesses.empty() && isNeeded) RunLoop::stop();
        return G_SOURCE_REMOVE;
    }

    std::map<GdkMonitor*, pid_t> mProcesses;  // the monitors only as names
};

}  // namespace

int runOverlays() {
    Overlays overlays;
    RunLoop::run();
    return 0;
}

bool isOverlay() { return std::getenv(kVariable) != nullptr; }

GdkMonitor* overlayMonitor() {
    const char* number = std::getenv(kVariable);
    return number ? gdk_display_get_monitor(gdk_display_get_default(), std::atoi(number)) : nullptr;
}

void endOverlays() {
    RunLoop::stop();
    kill(getppid(), SIGTERM);
}
