#pragma once

#include <functional>

namespace platform {

// The process's one main loop (GLib's default context), nested runs included, and its end. For the main
// thread alone; a signal is taken by a source of the loop.
class RunLoop {
  public:
    static void run();
    // Runs until done answers true, asked after every dispatched event, or until the process is to stop.
    static void runUntil(const std::function<bool()>& done);
    // The same for that long at most. Returns whether done answered true.
    static bool runUntil(const std::function<bool()>& done, int milliseconds);
    // Runs for that long, or until the process is to stop.
    static void runFor(int milliseconds);
    // Dispatches a little of what is due now and returns without waiting.
    static void pump();

    // Ends every run, nested ones too; later runs return at once.
    static void stop();
    static bool isStopping();
};

}  // namespace platform
