#pragma once

#include <string>

namespace platform {

enum class AlertType { Stop, Caution };

// Shows both texts until the user has seen them, in whatever way the current window allows. Always writes
// them to stderr as well.
void standardAlert(AlertType type, const std::string& text, const std::string& explanation);

void beep();

// Break into the debugger; debugStr gives it a text to show.
void debugger();
void debugStr(const std::string& text);

}  // namespace platform
