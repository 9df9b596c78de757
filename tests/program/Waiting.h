#pragma once

#include <chrono>
#include <thread>

// Nothing that a test waits for takes nearly as long, however busy the machine: who waits longer waits for
// ever.
constexpr std::chrono::seconds kPatience{40};

// Asks again and again until the answer is yes. Returns false when it stays no.
template <typename Question>
bool waitUntil(const Question& isSo) {
    const auto end = std::chrono::steady_clock::now() + kPatience;
    while (!isSo()) {
        if (std::chrono::steady_clock::now() > end) return false;
        std::this_thread::sleep_for(std::chrono::milliseconds(5));
    }
    return true;
}
