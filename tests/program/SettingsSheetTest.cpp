#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fstream>

#include "tests/program/Program.h"
#include "tests/program/Waiting.h"

using testing::HasSubstr;

namespace {

constexpr char kStore[] = "settings/tellmar/org.tellmar.TellmarScreenSaver.ini";
constexpr char kKey[] = "DisplayQuakeForNSeconds";

std::string stored(const Program& program) { return contentsOf(program.path(kStore)); }

// Opens the sheet and gives it the keyboard.
TestDisplay::Window openSheet(TestDisplay& display, Program& program) {
    program.start({"--configure"});
    TestDisplay::Window sheet = 0;
    waitUntil([&] { return (sheet = display.windowWithTitle("Tellmar settings")) != 0; });
    display.focus(sheet);
    return sheet;
}

}  // namespace

TEST(SettingsSheet, OKStoresTheTimeThatTheSliderStandsFor) {
    TestDisplay display;
    Program program(display);
    ASSERT_NE(0UL, openSheet(display, program));
    display.press("Home");  // the rate slider's lowest value, 50: the longest time
    display.press("Return");
    EXPECT_EQ(0, program.waitForStatus());
    EXPECT_THAT(stored(program), HasSubstr(std::string(kKey) + "=300"));
}

TEST(SettingsSheet, CancelAndClosingStoreNothing) {
    for (const bool closes : {false, true}) {
        TestDisplay display;
        Program program(display);
        const auto sheet = openSheet(display, program);
        ASSERT_NE(0UL, sheet);
        const std::string before = stored(program);
        display.press("Home");
        closes ? display.close(sheet) : display.press("Escape");
        EXPECT_EQ(0, program.waitForStatus());
        EXPECT_EQ(before, stored(program));
        EXPECT_THAT(before, HasSubstr(std::string(kKey) + "=5"));  // the default, stored at the first look
    }
}

TEST(SettingsSheet, AStoreThatCannotBeWrittenKeepsNobodyFromClosingTheSheet) {
    TestDisplay display;
    Program program(display);
    std::ofstream(program.path("file")) << "in the way";
    program.environment["XDG_CONFIG_HOME"] = program.path("file/folder");
    ASSERT_NE(0UL, openSheet(display, program));
    display.press("Return");
    EXPECT_EQ(0, program.waitForStatus());
}
