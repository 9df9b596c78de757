#include "tests/standins/Alert.h"

using standins::alertRecord;

namespace platform {

void standardAlert(AlertType type, const std::string& text, const std::string& explanation) {
    alertRecord().alerts.push_back({type, text, explanation});
}

void beep() { ++alertRecord().beeps; }
void debugger() { ++alertRecord().debuggerStops; }
void debugStr(const std::string& text) { alertRecord().debugTexts.push_back(text); }
void log(const std::string& line) { alertRecord().logLines.push_back(line); }

}  // namespace platform
