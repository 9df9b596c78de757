#pragma once

#include <string>
#include <vector>

#include "platform/Alert.h"

namespace standins {

struct Alert {
    platform::AlertType type;
    std::string text, explanation;

    bool operator==(const Alert&) const = default;
};

// What the core told the user and the developer, in order.
struct AlertRecord {
    std::vector<Alert> alerts;
    std::vector<std::string> debugTexts, logLines;
    int beeps = 0, debuggerStops = 0;
};

inline AlertRecord& alertRecord() {
    static AlertRecord record;
    return record;
}

}  // namespace standins
