#pragma once

#include "tests/program/TestDisplay.h"

// A display whose monitors come, go and change: an Xorg with the dummy driver. It starts with one monitor of
// 1280 x 720.
class MonitorDisplay : public TestDisplay {
  public:
    // What is missing here; empty when nothing is.
    static std::string obstacle();

    MonitorDisplay();

    // Monitors are counted from 0, left to right. The mode is named as the server does: "1024x768".
    void setMonitor(int monitor, int left, const std::string& mode);
    void removeMonitor(int monitor);
};
