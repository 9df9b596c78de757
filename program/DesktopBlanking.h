#pragma once

#include <optional>
#include <string>

// How the desktop itself blanks or locks the screen.
struct DesktopBlanking {
    std::string what;     // such as "GNOME blanks and locks the screen"
    double minutes;       // without input
    std::string command;  // puts it off to half an hour
};

// Empty when the desktop does neither, or does not say.
std::optional<DesktopBlanking> desktopBlanking();
