#pragma once

#include <string>
#include <vector>

#include "platform/Alert.h"

// Keeps what the core told the user and the developer, in order, instead of showing it.
namespace standins {

struct Alert {
    platform::AlertType type;
    std::string text, explanation;

    bool operator==(const Alert&) const = default;
};

struct AlertRecord {
    std::vector<Alert> alerts;
    int beeps = 0;
    int debuggerStops = 0;
    std::vector<std::string> debugTexts;
    std::vector<std::string> logLines;
};

AlertRecord& alertRecord();
void resetAlerts();

}  // namespace standins
