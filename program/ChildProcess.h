#pragma once

#include <sys/types.h>

#include <functional>
#include <memory>
#include <string>

#include "platform/linux/Handles.h"

// Another process of this program, with the same arguments. It ends when this one does.
class ChildProcess {
  public:
    struct Events {
        // Of its standard output.
        std::function<void(pid_t, const std::string& line)> line;
        // May delete this object. All lines came before.
        std::function<void(pid_t, int status)> end;
    };

    // Its environment is this process's, with the variable set to the value. Null on failure, which is
    // logged.
    static std::unique_ptr<ChildProcess> start(const char* variable, const std::string& value, Events events);
    // Does not end the process.
    ~ChildProcess();
    ChildProcess(const ChildProcess&) = delete;
    ChildProcess& operator=(const ChildProcess&) = delete;

    pid_t number() const { return mNumber; }
    // Asks it to end, also when it is stopped.
    void end() const;
    void endByForce() const;

  private:
    ChildProcess(pid_t number, int output, Events events);
    bool readLines();

    const pid_t mNumber;
    platform::FileDescriptor mOutput;
    const Events mEvents;
    std::string mText;  // read, but not yet a line
    unsigned mReadSource, mEndSource;
};
