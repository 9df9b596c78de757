#pragma once

#include <iosfwd>
#include <optional>
#include <string>
#include <vector>

// What the command line and the host's environment ask for.
struct Options {
    enum class Command { Show, List, Configure, Register, Unregister, Help, Version };

    Command command = Command::Show;
    bool fullscreen = false;
    bool preview = false;
    bool verbose = false;
    double speed = 1;     // ticks come so many times as often
    std::string feed;     // URL of the document in place of the service's answer
    std::string service;  // address of the event service, empty for the usual one
    bool noCache = false;
    std::optional<unsigned long> hostWindow;  // X11 window of the screen-saver host

    // What could not be understood, a line each. A host's saver goes on in spite of it.
    std::vector<std::string> complaints;
};

// hostEnvironment is the value of XSCREENSAVER_WINDOW, null where there is none.
Options parseOptions(const std::vector<std::string>& arguments, const char* hostEnvironment);

extern const char kUsage[];
