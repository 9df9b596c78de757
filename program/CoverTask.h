#pragma once

#include <gdk/gdk.h>

#include <string>

// The program covers every monitor, with one process for each. The first process shows nothing; it starts,
// watches and ends the others (see Covers.h). An environment variable tells each of them its task, and it
// answers on its standard output.

enum class CoverTask {
    None,       // not started by a first process
    Cover,      // cover a monitor
    Successor,  // the same, but stay off the screen until the first map is ready
    Check       // report which quakes there are
};

CoverTask coverTask();
bool coversMonitor();
bool isSuccessor();
// The monitor to cover; null when monitors have changed since this process was started.
GdkMonitor* monitorToCover();

// Reports that the window is on the screen, before its first map.
void reportWindow();
inline constexpr char kWindowReport[] = "window";

// Reports quakes, which a text stands for: those there are, or those of which the first map is on the screen.
// It is empty if there are none.
void reportQuakes(const std::string& quakes);

// Ends this process, and through the first one all the others.
void endCovers();

// For the first process: what to write into the environment of another. A check needs no monitor.
inline constexpr char kCoverTaskVariable[] = "TELLMAR_TASK";
std::string coverTaskText(CoverTask task, GdkMonitor* monitor);
