#pragma once

#include <sys/types.h>

#include <functional>
#include <string>
#include <vector>

#include "idle/Timer.h"

// The saver's process. It ends when this object does, and when this process is killed.
class Saver {
  public:
    // onEnd is called when the saver has ended, whoever ended it.
    Saver(EventLoop& loop, std::vector<std::string> command, std::function<void()> onEnd);
    ~Saver();
    Saver(const Saver&) = delete;
    Saver& operator=(const Saver&) = delete;

    bool isRunning() const { return mProcess != 0; }
    // Starts it; it must not be running.
    void start();
    // Asks it to end. If it does not, it is killed.
    void end();
    // Whether the saver that ended last was asked to.
    bool wasAskedToEnd() const { return mIsToEnd; }

  private:
    void run(pid_t parent);
    static int hasEnded(sd_event_source*, const siginfo_t*, void* self);

    EventLoop& mLoop;
    std::vector<std::string> mCommand;
    std::function<void()> mOnEnd;
    Timer mPatience;
    platform::Handle<sd_event_source, sd_event_source_disable_unref> mWatch;
    pid_t mProcess = 0;
    bool mIsToEnd = false;
};
