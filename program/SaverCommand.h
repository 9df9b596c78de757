#pragma once

struct Options;

// Runs the saver until its window ends or a signal comes. Returns the program's exit status.
int runSaver(const Options& options);
// Shows the settings sheet until it is closed.
int runSettings();
