#include "tests/standins/Alert.h"

namespace standins {

AlertRecord& alertRecord() {
    static AlertRecord record;
    return record;
}

void resetAlerts() { alertRecord() = {}; }

}  // namespace standins

namespace platform {

void standardAlert(AlertType type, const std::string& text, const std::string& explanation) {
    standins::alertRecord().alerts.push_back({type, text, explanation});
}

void beep() { ++standins::alertRecord().beeps; }

void debugger() { ++standins::alertRecord().debuggerStops; }

void debugStr(const std::string& text) { standins::alertRecord().debugTexts.push_back(text); }

void log(const std::string& line) { standins::alertRecord().logLines.push_back(line); }

}  // namespace platform
