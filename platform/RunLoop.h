#pragma once

#include <functional>

namespace platform {

// The process's one main loop (GLib's default context), nested runs included. For the main thread only:
// signals must be handled by a source of the loop.
class RunLoop {
  public:
    static void run();
    // Runs until done returns true, checked after every dispatched event, or until stop is called.
    static void runUntil(const std::function<bool()>& done);
    // The same, but at most that long. Returns whether done returned true.
    static bool runUntil(const std::function<bool()>& done, int milliseconds);
    // The same, also after stop was called: for what is still to be seen to at the end.
    static bool finish(const std::function<bool()>& done, int milliseconds);
    // Runs for that long, or until stop is called.
    static void runFor(int milliseconds);
    // Dispatches a few of the events that are due now and returns without waiting.
    static void pump();

    // Ends every run, nested ones too; later runs return at once.
    static void stop();
    static bool isStopping();
};

}  // namespace platform
