#pragma once

#include <gtk/gtk.h>

// The program covers every monitor, with one process for each. The first process shows nothing; it starts,
// watches and ends the others.

// Runs the first process until a signal, or user input to one of the others, ends them all. Returns the exit
// status: 1, and nothing is covered, while another program has grabbed the keyboard.
int runCovers();

// Whether this process covers a monitor.
bool isCover();
// The monitor that this process is to cover; null when monitors have changed since it was started.
GdkMonitor* coverMonitor();

// Ends this process, and through the first one all the others.
void endCovers();
