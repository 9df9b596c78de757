#include "host/XScreenSaverFile.h"

#include <gtest/gtest.h>

namespace {

using Place = XScreenSaverFile::Place;

constexpr char kCommand[] = "tellmar --root";
constexpr char kOurs[] = "\\\n\t\t\t\ttellmar --root\t\t\t\t    \\n";

// As XScreenSaver itself writes it.
constexpr char kWritten[] =
    "# XScreenSaver Preferences File\n"
    "timeout:\t0:05:00\n"
    "textProgram:\tfortune\n"
    "programs:\t\t\t\t\t\t\t\t      \\\n"
    "\t\t\t\tmaze --root\t\t\t\t    \\n\\\n"
    "- GL: \t\t\t\tjigsaw --root\t\t\t\t    \\n\\\n"
    "\n\n"
    "pointerHysteresis:  10\n\n";

std::string added(const std::string& text) {
    XScreenSaverFile file(text);
    file.add(kCommand);
    return file.text();
}

std::string removed(const std::string& text) {
    XScreenSaverFile file(text);
    file.remove();
    return file.text();
}

Place placeIn(const std::string& line) { return XScreenSaverFile("programs: " + line + "\n").place(); }

TEST(XScreenSaverFileTest, ALineIsAddedAtTheEndOfTheListAndTakenOutAgain) {
    std::string expected = kWritten;
    expected.insert(expected.find("\\\n\n\npointer"), kOurs);
    EXPECT_EQ(added(kWritten), expected);
    EXPECT_EQ(XScreenSaverFile(kWritten).place(), Place::None);
    EXPECT_EQ(XScreenSaverFile(expected).place(), Place::Listed);
    EXPECT_EQ(removed(expected), kWritten);
    EXPECT_EQ(removed(kWritten), kWritten);
}

TEST(XScreenSaverFileTest, AFileWithoutAListGetsOneAndLosesItAgain) {
    for (const std::string text : {"", "timeout:\t0:05:00\n", "# programs: maze\n", "\n", "no colon\n"}) {
        EXPECT_EQ(added(text), text + "programs:\t" + kOurs + "\n");
        EXPECT_EQ(removed(added(text)), text);
    }
}

TEST(XScreenSaverFileTest, AFileThatEndsInTheMiddleOfALineKeepsThatLine) {
    const std::string list = std::string("programs:\t") + kOurs + "\n";
    EXPECT_EQ(added("lock: True"), "lock: True\n" + list);
    EXPECT_EQ(added("textLiteral: a \\\n"), "textLiteral: a \\\n\n" + list);
    EXPECT_EQ(added("textLiteral: a \\"), "textLiteral: a \\\n\n" + list);
    EXPECT_EQ(removed(list.substr(0, list.size() - 1)), "");
}

TEST(XScreenSaverFileTest, AListIsContinuedHoweverItEnds) {
    const std::string ours = kOurs;
    EXPECT_EQ(added("programs: maze"), "programs: maze \\n" + ours);
    EXPECT_EQ(added("programs: maze  \nlock: True\n"), "programs: maze \\n" + ours + "  \nlock: True\n");
    EXPECT_EQ(added("programs: maze \\n\n"), "programs: maze \\n" + ours + "\n");
    EXPECT_EQ(added("programs: maze \\n\\\n"), "programs: maze \\n" + ours + "\\\n");
    EXPECT_EQ(added("programs: maze \\n\\"), "programs: maze \\n" + ours + "\\");
    EXPECT_EQ(added("programs: maze \\\n\n"), "programs: maze \\n" + ours + " \\\n\n");
    EXPECT_EQ(added("programs: a \\n b\n"), "programs: a \\n b \\n" + ours + "\n");
    EXPECT_EQ(added("programs:\n"), "programs:\t" + ours + "\n");
    EXPECT_EQ(added("programs: \\\n\n"), "programs:\t" + ours + " \\\n\n");
}

TEST(XScreenSaverFileTest, OurLineIsKnownInEachFormThatALineCanHave) {
    for (const char* line :
         {"tellmar", "tellmar --root", "/opt/x/tellmar --demo --speed 2", "GL: tellmar",
          "\"My quakes\" tellmar --root", "default-n: \"Q\" /a/tellmar", "maze \\n tellmar",
          "\\\n  tellmar \\n\\\n", "tell\\\nmar --root", "- maze \\n\\\n tellmar \\n maze"})
        EXPECT_EQ(placeIn(line), Place::Listed) << line;
    for (const char* line :
         {"- tellmar", "-tellmar --root", "- GL: \"Q\" tellmar", "maze \\n\\\n-\ttellmar \\n"})
        EXPECT_EQ(placeIn(line), Place::SwitchedOff) << line;
    for (const char* line :
         {"", "-", "\"tellmar", "\"tellmar\"", "tellmarine", "maze tellmar", "tellmar/maze", "x\\"})
        EXPECT_EQ(placeIn(line), Place::None) << line;
}

TEST(XScreenSaverFileTest, OnlyOurLinesGo) {
    EXPECT_EQ(removed("programs: a \\n\\\n- tellmar --demo \\n\\\n b\n"), "programs: a \\n\\\n b\n");
    EXPECT_EQ(removed("programs: tellmar \\n a \\n tellmar"), "programs: a \\n");
    EXPECT_EQ(removed("programs: tellmar\nlock: True\n"), "lock: True\n");
    EXPECT_EQ(removed("textProgram: tellmar\n"), "textProgram: tellmar\n");
}

TEST(XScreenSaverFileTest, OnlyTheListThatXScreenSaverReadsCounts) {
    const std::string hidden = "# all \\\nprograms: tellmar\n";
    EXPECT_EQ(XScreenSaverFile(hidden).place(), Place::None);
    EXPECT_EQ(XScreenSaverFile("*programs: tellmar\n").place(), Place::None);
    EXPECT_EQ(XScreenSaverFile("textLiteral: \\\nprograms: tellmar\n").place(), Place::None);
    EXPECT_EQ(XScreenSaverFile("  Programs : tellmar\n").place(), Place::Listed);
    EXPECT_EQ(added("programs: a\nprograms: b\n"),
              std::string("programs: a\nprograms: b \\n") + kOurs + "\n");
}

TEST(XScreenSaverFileTest, AChoiceMovesOnlyWhereTheNumbersDo) {
    const std::string choice = "selected: 3\n";
    EXPECT_TRUE(XScreenSaverFile(choice).addingMovesChoice());
    EXPECT_FALSE(XScreenSaverFile("lock: True\n").addingMovesChoice());
    EXPECT_FALSE(XScreenSaverFile(choice + "programs: a\n").addingMovesChoice());
    EXPECT_TRUE(XScreenSaverFile(choice + "programs: tellmar \\n a\n").removingMovesChoice());
    EXPECT_FALSE(XScreenSaverFile(choice + "programs: a \\n tellmar \\n\\\n\n").removingMovesChoice());
    EXPECT_FALSE(XScreenSaverFile("programs: tellmar \\n a\n").removingMovesChoice());
}

}  // namespace
