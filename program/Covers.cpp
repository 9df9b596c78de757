#include "program/Covers.h"

#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <csignal>
#include <cstdlib>
#include <iterator>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "platform/Log.h"
#include "platform/RunLoop.h"
#include "platform/linux/Handles.h"
#include "platform/linux/desktop/KeyboardFocus.h"
#include "platform/linux/desktop/SessionBus.h"
#include "program/Restart.h"

using platform::ErrorRef, platform::Handle, platform::RunLoop;

namespace {

// Tells a process which monitor to cover.
constexpr char kVariable[] = "TELLMAR_MONITOR";
// A process may end because its monitor was removed, before the first process learns of that. After this time
// it has.
constexpr guint kSecondsToRetry = 1;
constexpr int kMaxRestarts = 10;  // a process that keeps ending will not stay up

// In the order they were added, which is the same in every process.
std::vector<GdkMonitor*> monitors() {
    GdkDisplay* display = gdk_display_get_default();
    std::vector<GdkMonitor*> all;
    for (int i = 0; i < gdk_display_get_n_monitors(display); ++i)
        all.push_back(gdk_display_get_monitor(display, i));
    return all;
}

// The monitor's number and how many there are: a name from before monitors changed matches none.
std::string nameOf(GdkMonitor* monitor) {
    const auto all = monitors();
    const auto number = std::find(all.begin(), all.end(), monitor) - all.begin();
    return std::to_string(number) + " of " + std::to_string(all.size());
}

// A process that covers a monitor must not outlive the first one.
void followParent(gpointer parent) {
    prctl(PR_SET_PDEATHSIG, SIGTERM);
    if (getppid() != GPOINTER_TO_INT(parent)) _exit(1);
}

// Starts the process for the monitor of this name. Returns 0 on failure.
pid_t startCover(const std::string& monitor) {
    std::vector<std::string> arguments = ownArguments();
    std::vector<char*> pointers;
    for (std::string& argument : arguments) pointers.push_back(argument.data());
    pointers.push_back(nullptr);

    const Handle<gchar*, g_strfreev> environment(
        g_environ_setenv(g_get_environ(), kVariable, monitor.c_str(), TRUE));
    GError* error = nullptr;
    GPid process = 0;
    // The program's own file, whatever name it was started by.
    pointers.insert(pointers.begin(), const_cast<char*>("/proc/self/exe"));
    g_spawn_async(nullptr, pointers.data(), environment.get(),
                  static_cast<GSpawnFlags>(G_SPAWN_DO_NOT_REAP_CHILD | G_SPAWN_FILE_AND_ARGV_ZERO),
                  followParent, GINT_TO_POINTER(getpid()), &process, &error);
    if (const ErrorRef owned(error); owned) platform::log(owned->message);
    return process;
}

// The first process's view of the others.
class Covers {
  public:
    Covers() {
        GdkDisplay* display = gdk_display_get_default();
        g_signal_connect_swapped(display, "monitor-added", G_CALLBACK(cover), this);
        g_signal_connect_swapped(display, "monitor-removed", G_CALLBACK(uncover), this);
        for (GdkMonitor* monitor : monitors()) cover(this, monitor);
    }

    ~Covers() {
        g_signal_handlers_disconnect_by_data(gdk_display_get_default(), this);
        for (const auto& [monitor, process] : mProcesses) end(process);
        for (const auto& [monitor, process] : mProcesses) waitpid(process, nullptr, 0);
    }
    Covers(const Covers&) = delete;
    Covers& operator=(const Covers&) = delete;

  private:
    static void cover(Covers* self, GdkMonitor* monitor) {
        if (const pid_t process = startCover(nameOf(monitor))) {
            self->mProcesses[monitor] = process;
            g_child_watch_add(process, forget, self);
        } else {
            g_timeout_add_seconds(kSecondsToRetry, coverMissing, self);
        }
    }

    static void uncover(Covers* self, GdkMonitor* monitor) {
        const auto found = self->mProcesses.find(monitor);
        if (found != self->mProcesses.end()) end(found->second);
        self->mProcesses.erase(monitor);
        self->mFinished.erase(monitor);
        self->mRestarts = 0;
    }

    // SIGCONT lets a stopped process end, too.
    static void end(pid_t process) {
        kill(process, SIGTERM);
        kill(process, SIGCONT);
    }

    // A process that ended normally was asked to, or has told the user why. One that crashed, or did not find
    // its monitor, is replaced.
    static void forget(GPid ended, gint status, gpointer covers) {
        auto* self = static_cast<Covers*>(covers);
        const auto found = std::find_if(self->mProcesses.begin(), self->mProcesses.end(),
                                        [ended](const auto& each) { return each.second == ended; });
        if (found == self->mProcesses.end()) return;
        if (status == 0) self->mFinished.insert(found->first);
        self->mProcesses.erase(found);
        g_timeout_add_seconds(kSecondsToRetry, status == 0 ? endIfFinished : coverMissing, self);
    }

    static gboolean endIfFinished(gpointer self) {
        if (!static_cast<Covers*>(self)->mFinished.empty()) RunLoop::stop();
        return G_SOURCE_REMOVE;
    }

    static gboolean coverMissing(gpointer covers) {
        auto* self = static_cast<Covers*>(covers);
        if (++self->mRestarts > kMaxRestarts)
            RunLoop::stop();
        else
            for (GdkMonitor* monitor : self->uncovered()) cover(self, monitor);
        return G_SOURCE_REMOVE;
    }

    std::vector<GdkMonitor*> uncovered() const {
        auto found = monitors();
        std::erase_if(found, [this](GdkMonitor* monitor) { return mProcesses.contains(monitor); });
        return found;
    }

    // Monitors are only keys here, never dereferenced, and only those that exist.
    std::map<GdkMonitor*, pid_t> mProcesses;
    std::set<GdkMonitor*> mFinished;
    int mRestarts = 0;  // since a monitor was last removed
};

}  // namespace

int runCovers() {
    platform::closeOverview();
    if (platform::keyboardIsTaken()) {
        if (!RunLoop::isStopping())
            platform::log("a screen locker or an open menu has the keyboard: close it first");
        return 1;
    }
    const platform::FocusKeeper focus;
    Covers covers;
    RunLoop::run();
    return 0;
}

bool isCover() { return std::getenv(kVariable) != nullptr; }

GdkMonitor* coverMonitor() {
    const char* name = std::getenv(kVariable);
    const auto all = monitors();
    const auto found =
        std::find_if(all.begin(), all.end(), [name](auto each) { return nameOf(each) == name; });
    return found == all.end() ? nullptr : *found;
}

void endCovers() {
    RunLoop::stop();
    kill(getppid(), SIGTERM);
}
