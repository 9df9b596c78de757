#pragma once

#include <optional>
#include <string>
#include <vector>

namespace standins {

// The network. File URLs are read and written for real.
struct URLLoading {
    std::optional<std::string> answerToAll;  // for every URL; nothing: unreachable
    std::vector<std::string> asked;
};

inline URLLoading& urlLoading() {
    static URLLoading state;
    return state;
}

}  // namespace standins
