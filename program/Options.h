#pragma once

#include <iosfwd>
#include <optional>
#include <string>
#include <vector>

// What the command line and the host's environment ask for.
struct Options {
    enum class Command { Show, List, Configure, Register, Unregister, Idle, Help, Version };

    Command command = Command::Show;
    bool fullscreen = false;
    bool kiosk = false;  // full screen, only ended by a quit key, and the screen stays on
    bool preview = false;
    bool verbose = false;
    double speed = 1;     // how many times as often to tick
    std::string feed;     // URL of the document to show; empty to ask the service
    bool demo = false;    // that document is the sample
    std::string service;  // address of the event service; empty for GeoNet's
    bool noCache = false;
    std::string idle;                         // minutes, "off", or empty to report how things stand
    std::optional<unsigned long> hostWindow;  // X11 window of the screen-saver host

    // What is wrong with the arguments, one line each. All other arguments still count.
    std::vector<std::string> complaints;
};

// Arguments exclude the program's name. hostEnvironment is the value of XSCREENSAVER_WINDOW, null when it is
// unset.
Options parseOptions(const std::vector<std::string>& arguments, const char* hostEnvironment);
