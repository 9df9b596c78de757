#include "program/XScreenSaverFile.h"

#include <gtest/gtest.h>

namespace {

using Place = XScreenSaverFile::Place;

const std::string kOurs = "\\\n\t\t\t\ttellmar --root\t\t\t\t    \\n", kList = "programs:\t" + kOurs + "\n";

std::string added(const std::string& text) {
    XScreenSaverFile file(text);
    file.add("tellmar --root");
    return file.text();
}

std::string removed(const std::string& text) {
    XScreenSaverFile file(text);
    file.remove();
    return file.text();
}

Place placeIn(const std::string& text) { return XScreenSaverFile(text).place(); }

TEST(XScreenSaverFileTest, AFileWithoutAListGetsOne) {
    for (const std::string text : {"", "timeout:\t0:05:00\n", "# programs: maze\n", "no colon\n"}) {
        EXPECT_EQ(added(text), text + kList);
        EXPECT_EQ(removed(added(text)), text);
    }
    // A last line that does not end is ended first.
    EXPECT_EQ(added("lock: True"), "lock: True\n" + kList);
    for (const char* text : {"textLiteral: a \\\n", "textLiteral: a \\"})
        EXPECT_EQ(added(text), "textLiteral: a \\\n\n" + kList);
}

TEST(XScreenSaverFileTest, AListIsContinuedHoweverItEnds) {
    const std::pair<const char*, std::string> cases[] = {
        {"programs: maze", "programs: maze \\n" + kOurs},
        {"programs: maze  \nlock: True\n", "programs: maze \\n" + kOurs + "  \nlock: True\n"},
        {"programs: maze \\n\\", "programs: maze \\n" + kOurs + "\\"},
        {"programs: maze \\\n\n", "programs: maze \\n" + kOurs + " \\\n\n"},
        {"programs:\n", "programs:\t" + kOurs + "\n"},
        {"programs: a\nprograms: b\n", "programs: a\nprograms: b \\n" + kOurs + "\n"},
    };
    for (const auto& [before, after] : cases) EXPECT_EQ(added(before), after) << before;
}

TEST(XScreenSaverFileTest, OurLineIsKnownInEachFormThatALineCanHave) {
    const auto placeOf = [](const std::string& line) { return placeIn("  Programs : " + line + "\n"); };
    for (const char* line :
         {"tellmar --root", "\"My quakes\" tellmar --root", "default-n: \"Q\" /a/tellmar",
          "\\\n  tellmar \\n\\\n", "tell\\\nmar --root", "tellmar\r", "- maze \\n\\\n tellmar \\n maze"})
        EXPECT_EQ(placeOf(line), Place::Listed) << line;
    EXPECT_EQ(placeOf("maze \\n\\\n- GL: \"Q\" tellmar \\n"), Place::SwitchedOff);
    for (const char* line :
         {"", "-", "\"tellmar", "\"tellmar\"", "tellmarine", "maze tellmar", "tellmar/maze", "x\\"})
        EXPECT_EQ(placeOf(line), Place::None) << line;
    for (const char* text :
         {"# all \\\nprograms: tellmar\n", "*programs: tellmar\n", "textLiteral: \\\nprograms: tellmar\n"})
        EXPECT_EQ(placeIn(text), Place::None) << text;
}

TEST(XScreenSaverFileTest, OnlyOurLinesGo) {
    const std::pair<const char*, const char*> cases[] = {
        {"programs: a \\n\\\n- tellmar --demo \\n\\\n b\n", "programs: a \\n\\\n b\n"},
        {"programs: tellmar \\n a \\n tellmar", "programs: a \\n"},
        {"programs: tellmar\nlock: True\n", "lock: True\n"},
        {"textProgram: tellmar\n", "textProgram: tellmar\n"}};
    for (const auto& [before, after] : cases) EXPECT_EQ(removed(before), after);
}

}  // namespace
