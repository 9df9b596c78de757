#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fstream>

#include "tests/program/Program.h"

using testing::HasSubstr;
using testing::StartsWith;

namespace {

const char kNoEvents[] = "<?xml version=\"1.0\"?><quakeml><eventParameters/></quakeml>";

// What the program says for itself; the toolkit's warnings are another matter.
int ownLines(const Program& program) { return program.countLines("tellmar: "); }

}  // namespace

TEST(CommandLine, HelpAndVersionNeedNoDisplay) {
    Program help, version;
    EXPECT_EQ(0, help.run({"--help"}));
    EXPECT_THAT(help.output(), StartsWith("Usage: tellmar"));
    EXPECT_EQ("", help.errors());
    EXPECT_EQ(0, version.run({"--version"}));
    EXPECT_THAT(version.output(), StartsWith("tellmar "));
    EXPECT_EQ("", version.errors());
}

TEST(CommandLine, WithoutADisplayOneLineSaysSo) {
    for (const char* option : {"--demo", "--preview", "--configure"}) {
        Program program;
        EXPECT_EQ(1, program.run({option})) << option;
        EXPECT_EQ("tellmar: there is no display to draw on\n", program.errors()) << option;
    }
    Program misled;
    misled.environment["DISPLAY"] = ":4711";
    EXPECT_EQ(1, misled.run({"--demo"}));
    EXPECT_EQ(1, ownLines(misled));
}

TEST(CommandLine, AWindowThatDoesNotExistIsNamedInOneLine) {
    TestDisplay display;
    Program option(display), environment(display);
    EXPECT_EQ(1, option.run({"--demo", "--window-id", "0x7654321"}));
    EXPECT_THAT(option.errors(), HasSubstr("0x7654321"));
    EXPECT_EQ(1, ownLines(option));
    environment.environment["XSCREENSAVER_WINDOW"] = "0x7654321";
    EXPECT_EQ(1, environment.run({"--demo"}));
    EXPECT_THAT(environment.errors(), HasSubstr("0x7654321"));
    EXPECT_EQ(1, ownLines(environment));
}

TEST(CommandLine, AUserIsToldOfAnUnknownOption) {
    Program program;
    EXPECT_EQ(2, program.run({"--demo", "--colour", "red"}));
    EXPECT_THAT(program.errors(), HasSubstr("--colour"));
    EXPECT_THAT(program.errors(), HasSubstr("--help"));
}

TEST(CommandLine, AHostsSaverGoesOnInSpiteOfAnUnknownOption) {
    TestDisplay display;
    Program program(display);
    program.environment["XSCREENSAVER_WINDOW"] = std::to_string(display.createWindow(1280, 720));
    program.start({"--demo", "--verbose", "--speed", "30", "--colour"});
    EXPECT_TRUE(program.waitForLines("tick"));
    EXPECT_EQ(1, program.countLines("--colour"));
}

TEST(CommandLine, TheListHasTheQuakesInTheOrderOfTheirAppearance) {
    Program program;
    ASSERT_EQ(0, program.run({"--list", "--demo"}));
    const std::string list = program.output();
    EXPECT_EQ(11, countOf(list, "\n"));  // the heading and ten quakes
    const auto first = list.find(" 1  "), second = list.find(" 2  ");
    const auto kaikoura = list.find("2016-11-13T11:02");
    EXPECT_THAT(list.substr(first, second - first), HasSubstr("7.8"));
    EXPECT_TRUE(first < kaikoura && kaikoura < second) << list;
    EXPECT_EQ("", program.errors());
}

TEST(CommandLine, AListOfNothingSaysSo) {
    Program program;
    std::ofstream(program.path("none.xml")) << kNoEvents;
    EXPECT_EQ(0, program.run({"--list", "--feed=none.xml"}));
    EXPECT_EQ(1, countOf(program.output(), "\n"));
    EXPECT_THAT(program.output(), HasSubstr("no earthquakes"));
}
