#include "program/Options.h"

#include <gmock/gmock.h>

#include <cstdlib>

using testing::ElementsAre, testing::EndsWith, testing::IsEmpty, testing::MatchesRegex;

namespace {

Options parse(const std::vector<std::string>& arguments, const char* environment = nullptr) {
    return parseOptions(arguments, environment);
}

}  // namespace

TEST(Options, OneDashOrTwoEitherFormOfAValueAndAbbreviationsMeanTheSameAndTheLastOneCounts) {
    const std::vector<std::vector<std::string>> forms = {{"-window-id", "0x1a"},
                                                         {"--window-id", "26"},
                                                         {"-root", "--root", "-w=0X1A"},
                                                         {"--window-id=1", "--window-id=26", "--"}};
    for (const auto& form : forms) {
        const Options options = parse(form);
        EXPECT_EQ(26UL, options.hostWindow) << form[0];
        EXPECT_THAT(options.complaints, IsEmpty());
    }
    EXPECT_EQ(Options::Command::Help, parse({"--list", "-h"}).command);
}

TEST(Options, AnInvalidValueIsReportedAndChangesNothing) {
    for (const std::string speed : {"0", "-1", "nan", "inf", "1e999", "1001", "2x", " 2", "fast", "0x10"}) {
        const Options options = parse({"--speed", "7", "-speed", speed});
        EXPECT_EQ(7, options.speed) << speed;
        EXPECT_THAT(options.complaints, ElementsAre(MatchesRegex("-speed takes .*not " + speed)));
    }
    EXPECT_EQ(1000, parse({"--speed=1000"}).speed);
    for (const std::string window : {"0", "0x0", "0x", "-5", "12w", "root", "99999999999999999999999"}) {
        const Options options = parse({"--window-id", window});
        EXPECT_FALSE(options.hostWindow) << window;
        EXPECT_THAT(options.complaints, ElementsAre(EndsWith("not " + window)));
    }
    EXPECT_THAT(parse({"--service", "https://"}).complaints, ElementsAre(EndsWith("not https://")));
}

TEST(Options, EachFaultIsNamedInItsTurnAndTheRestStillCounts) {
    for (const bool isPosix : {false, true}) {
        if (isPosix) setenv("POSIXLY_CORRECT", "1", 1);
        const Options options = parse({"demo", "--colour=red", "-re", "--f", "-fullscreen=no", "--feed=", "-",
                                       "--service", "", "--preview", "--", "--list", "--speed"});
        unsetenv("POSIXLY_CORRECT");
        EXPECT_THAT(options.complaints,
                    ElementsAre("unexpected argument: demo", "unknown option: --colour=red",
                                "--f could mean --fullscreen or --feed", "-fullscreen takes no value",
                                "--feed needs a value", "unexpected argument: -", "--service needs a value",
                                "unexpected argument: --list", "unexpected argument: --speed"));
        EXPECT_TRUE(options.preview && !options.fullscreen && options.feed.empty());
        EXPECT_EQ(Options::Command::Register, options.command);
    }
    EXPECT_THAT(parse({"-", "--speed"}).complaints, ElementsAre(EndsWith(": -"), "--speed needs a value"));
}

TEST(Options, TheHostsEnvironmentNamesTheWindowUnlessAnOptionDoes) {
    EXPECT_EQ(0x1400007UL, parse({"--root"}, "0x1400007").hostWindow);
    EXPECT_EQ(7UL, parse({"--window-id=7"}, "20971527").hostWindow);
    EXPECT_THAT(parse({}, "").complaints, IsEmpty());
    EXPECT_THAT(parse({}, "wayland-token-42").complaints, ElementsAre(EndsWith(": wayland-token-42")));
}

TEST(Options, TheMinutesOfIdleMayFollowInEitherFormOrBeLeftOut) {
    for (const auto& [arguments, value] :
         {std::pair<std::vector<std::string>, std::string>{{"--idle", "3"}, "3"},
          {{"-idle=0.5"}, "0.5"},
          {{"--idle", "off", "--verbose"}, "off"},
          {{"--idle", "--verbose"}, ""},
          {{"--idle=7", "--idle"}, ""}}) {
        const Options options = parse(arguments);
        EXPECT_EQ(Options::Command::Idle, options.command);
        EXPECT_EQ(value, options.idle);
        EXPECT_THAT(options.complaints, IsEmpty());
    }
    for (const std::string value : {"0", "1e9", "1441", "0.009", "-1.5e1x", "on"})
        EXPECT_THAT(parse({"--idle=" + value}).complaints, ElementsAre(EndsWith("not " + value)));
    EXPECT_THAT(parse({"--idle", "3", "4"}).complaints, ElementsAre("unexpected argument: 4"));
}
