#pragma once

#include <gmock/gmock.h>

#include <string>

#include "tests/program/Colors.h"
#include "tests/program/Program.h"
#include "tests/program/TestDisplay.h"
#include "tests/program/Waiting.h"

// The program on a display of its own; a second one on the same display would find what the first left there.
class ProgramTest : public testing::Test {
  protected:
    // Waits until the screen's picture satisfies the condition.
    template <typename Condition>
    bool waitForPicture(const Condition& condition) const {
        return waitUntil([&] { return condition(display.picture()); });
    }
    bool waitForCorners(bool (*condition)(const Color&), int width = 1280, int height = 720) const {
        return waitForPicture(
            [&](const Picture& picture) { return picture.hasCorners(width, height, condition); });
    }

    TestDisplay display;
    Program program{display};
};

inline std::string hexadecimal(TestDisplay::Window window) {
    char text[32];
    std::snprintf(text, sizeof text, "0x%lx", window);
    return text;
}
