#pragma once

#include <map>
#include <optional>
#include <string>
#include <vector>

namespace standins {

// The network: what each URL answers, and what was asked. File URLs are read and written for real.
struct URLLoading {
    std::map<std::string, std::string> answers;
    std::optional<std::string>
        answerToAll;  // for every URL without an answer of its own; nothing: unreachable
    std::vector<std::string> asked;
};

URLLoading& urlLoading();

}  // namespace standins
