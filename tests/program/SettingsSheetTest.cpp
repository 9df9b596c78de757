#include "tests/program/ProgramTest.h"

using testing::HasSubstr;

namespace {

class SettingsSheet : public ProgramTest {
  protected:
    static std::string stored(const Program& of) {
        return contentsOf(of.path("settings/tellmar/org.tellmar.TellmarScreenSaver.ini"));
    }
    // Opens the sheet and gives it the keyboard.
    TestDisplay::Window openSheet(Program& of) {
        of.start({"--configure"});
        TestDisplay::Window sheet = 0;
        EXPECT_TRUE(waitUntil([&] { return (sheet = display.windowWithTitle("Tellmar settings")) != 0; }));
        display.focus(sheet);
        return sheet;
    }
};

}  // namespace

TEST_F(SettingsSheet, OKStoresTheTimeThatTheSliderStandsFor) {
    openSheet(program);
    display.press("Home");  // the rate slider's lowest value, 50: the longest time
    display.press("Return");
    EXPECT_EQ(0, program.waitForStatus());
    EXPECT_THAT(stored(program), HasSubstr("DisplayQuakeForNSeconds=300"));
}

TEST_F(SettingsSheet, CancelAndClosingStoreNothing) {
    for (const bool closes : {false, true}) {
        Program each(display);
        const auto sheet = openSheet(each);
        const std::string before = stored(each);
        display.press("Home");
        closes ? display.close(sheet) : display.press("Escape");
        EXPECT_EQ(0, each.waitForStatus());
        EXPECT_EQ(before, stored(each));
        EXPECT_THAT(before, HasSubstr("DisplayQuakeForNSeconds=5\n"));  // stored at the first look
    }
}
