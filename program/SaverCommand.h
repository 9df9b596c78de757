#pragma once

struct Options;

// Runs the saver until its window closes or a signal arrives. Returns the program's exit status.
int runSaver(const Options& options);
// Shows the settings sheet until it is closed.
int runSettings();
