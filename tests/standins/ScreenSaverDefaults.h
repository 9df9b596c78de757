#pragma once

#include <map>
#include <string>

namespace standins {

// What synchronize has written, by module and key.
using StoredDefaults = std::map<std::string, std::map<std::string, int>>;

inline StoredDefaults& storedDefaults() {
    static StoredDefaults state;
    return state;
}

}  // namespace standins
