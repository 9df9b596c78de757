#pragma once

class EventFeed;
struct Options;

// Runs the saver until its window closes or a signal arrives. Returns the program's exit status. If the
// feed's request failed and there is an answer later, the program restarts at its end.
int runSaver(const Options& options, EventFeed& feed);
// Shows the settings sheet until it is closed.
int runSettings();
