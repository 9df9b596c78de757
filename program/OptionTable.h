#pragma once

#include <span>

enum class Option {
    Fullscreen,
    Kiosk,
    WindowId,
    Root,
    Preview,
    Demo,
    Feed,
    Service,
    NoCache,
    Speed,
    List,
    Configure,
    Register,
    Unregister,
    Idle,
    Version,
    Help,
    Verbose
};

// One option, for the parser, --help, the man page and the shell completion.
struct OptionEntry {
    Option option;
    const char* name;       // without dashes
    const char* valueName;  // null when the option takes no value, in brackets when it may be left out
    const char* group;      // title under which the option is listed
    const char* help;       // at most 59 columns a line
    const char* man;        // full sentences for the man page; null when the help is enough
};

bool takesOptionalValue(const OptionEntry& entry);

// All options, group by group.
std::span<const OptionEntry> optionTable();
