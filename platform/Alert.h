#pragma once

#include <string>

namespace platform {

enum class AlertType { Stop, Caution };

// Shows both texts until the user has seen them, in the way that the window at hand allows, and writes them
// to stderr in every case.
void standardAlert(AlertType type, const std::string& text, const std::string& explanation);

void beep();

// Stops in the debugger, debugStr with a text for it.
void debugger();
void debugStr(const std::string& text);

}  // namespace platform
