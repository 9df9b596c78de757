#include "tests/standins/Desktop.h"

using standins::desktop;

namespace platform {

void standardAlert(AlertType type, const std::string& text, const std::string& explanation) {
    desktop.alerts.push_back({type, text, explanation});
}

void beep() { ++desktop.beeps; }
void debugger() { ++desktop.debuggerStops; }
void debugStr(const std::string& text) { desktop.debugTexts.push_back(text); }

}  // namespace platform
