#pragma once

#include <span>

enum class Option {
    Fullscreen,
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
    Version,
    Help,
    Verbose
};

// One option, as the parser, --help, the man page and the shell completion know it.
struct OptionEntry {
    Option option;
    const char* name;       // without dashes
    const char* valueName;  // null when the option takes no value
    const char* group;      // title that the option is listed under
    const char* help;       // at most 59 columns; a line feed starts another line
    const char* man;        // whole sentences for the man page, null when the help says it all
};

// Every option, with those of a group side by side.
std::span<const OptionEntry> optionTable();
