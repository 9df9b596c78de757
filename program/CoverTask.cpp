#include "program/CoverTask.h"

#include <unistd.h>

#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <string_view>

#include "platform/RunLoop.h"
#include "platform/linux/desktop/Monitors.h"

namespace {

constexpr char kCover[] = "cover ", kSuccessor[] = "successor ", kCheck[] = "check";

std::string_view ownTask() {
    const char* text = std::getenv(kCoverTaskVariable);
    return text ? text : "";
}

// The monitor's number, in the order in which they were added, and how many there are: the same in every
// process, and a name from before monitors changed matches none.
std::string nameOf(GdkDisplay* display, int number) {
    return std::to_string(number) + " of " + std::to_string(gdk_display_get_n_monitors(display));
}

void report(const char* line) {
    std::puts(line);
    std::fflush(stdout);
}

}  // namespace

CoverTask coverTask() {
    if (ownTask().starts_with(kCover)) return CoverTask::Cover;
    if (ownTask().starts_with(kSuccessor)) return CoverTask::Successor;
    return ownTask() == kCheck ? CoverTask::Check : CoverTask::None;
}

bool isSuccessor() { return coverTask() == CoverTask::Successor; }
bool coversMonitor() { return coverTask() == CoverTask::Cover || isSuccessor(); }

GdkMonitor* monitorToCover() {
    GdkDisplay* display = gdk_display_get_default();
    for (int i = 0; i < gdk_display_get_n_monitors(display); ++i)
        if (ownTask().ends_with(' ' + nameOf(display, i))) return gdk_display_get_monitor(display, i);
    return nullptr;
}

void reportWindow() { report(kWindowReport); }
void reportQuakes(const std::string& quakes) { report(quakes.c_str()); }

void endCovers() {
    platform::RunLoop::stop();
    kill(getppid(), SIGTERM);
}

std::string coverTaskText(CoverTask task, GdkMonitor* monitor) {
    if (task == CoverTask::Check) return kCheck;
    const std::string name = nameOf(gdk_monitor_get_display(monitor), platform::numberOf(monitor));
    return (task == CoverTask::Successor ? kSuccessor : kCover) + name;
}
