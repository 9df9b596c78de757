#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fstream>

#include "tests/program/Program.h"

using testing::HasSubstr, testing::StartsWith;

namespace {

// What the program says for itself; the toolkit's warnings are another matter.
int ownLines(const Program& program) { return program.countLines("tellmar: "); }

}  // namespace

TEST(CommandLine, HelpAndVersionNeedNoDisplay) {
    for (const auto& [option, start] : {std::pair{"--help", "Usage: tellmar"}, {"--version", "tellmar "}}) {
        Program program;
        EXPECT_EQ(0, program.run({option}));
        EXPECT_THAT(program.output(), StartsWith(start));
        EXPECT_EQ("", program.errors());
    }
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
    for (const bool isOption : {true, false}) {
        Program program(display);
        if (!isOption) program.environment["XSCREENSAVER_WINDOW"] = "0x7654321";
        EXPECT_EQ(1, program.run({"--demo", isOption ? "--window-id=0x7654321" : "--root"}));
        EXPECT_THAT(program.errors(), HasSubstr("0x7654321"));
        EXPECT_EQ(1, ownLines(program));
    }
}

TEST(CommandLine, AUserIsToldOfAnUnknownOptionAndAHostsSaverGoesOn) {
    Program users;
    EXPECT_EQ(2, users.run({"--demo", "--colour", "red"}));
    EXPECT_THAT(users.errors(), HasSubstr("--colour"));
    EXPECT_THAT(users.errors(), HasSubstr("--help"));

    TestDisplay display;
    Program hosts(display);
    hosts.environment["XSCREENSAVER_WINDOW"] = std::to_string(display.createWindow(1280, 720));
    hosts.start({"--demo", "--verbose", "--speed", "30", "--colour"});
    EXPECT_TRUE(hosts.waitForLines("tick"));
    EXPECT_EQ(1, hosts.countLines("--colour"));
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
    std::ofstream(program.path("none.xml")) << "<quakeml><eventParameters/></quakeml>";
    EXPECT_EQ(0, program.run({"--list", "--feed=none.xml"}));
    EXPECT_EQ("There are no earthquakes to show.\n", program.output());
}
