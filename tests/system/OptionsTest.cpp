#include "program/Options.h"

#include <gmock/gmock.h>

using testing::ElementsAre, testing::EndsWith, testing::HasSubstr, testing::IsEmpty, testing::MatchesRegex;

namespace {

Options parse(const std::vector<std::string>& arguments, const char* environment = nullptr) {
    return parseOptions(arguments, environment);
}

}  // namespace

TEST(Options, OneDashOrTwoAndEitherFormOfAValueMeanTheSameAndTheLastOneCounts) {
    const std::vector<std::vector<std::string>> forms = {{"-window-id", "0x1a"},
                                                         {"--window-id", "26"},
                                                         {"-window-id=0X1A", "--root"},
                                                         {"--window-id=1", "--window-id=26"}};
    for (const auto& form : forms) {
        const Options options = parse(form);
        EXPECT_EQ(26UL, options.hostWindow) << form[0];
        EXPECT_THAT(options.complaints, IsEmpty()) << form[0];
    }
    EXPECT_TRUE(parse({"-root", "-fullscreen"}).fullscreen);
    EXPECT_THAT(parse({"--root", "--root"}).complaints, IsEmpty());
}

TEST(Options, AFeedIsAnAddressOrAFileSeenFromTheCurrentFolder) {
    EXPECT_EQ("http://host/?a=b&c=d", parse({"--feed=http://host/?a=b&c=d"}).feed);
    EXPECT_EQ("https://host/feed", parse({"--feed", "https://host/feed"}).feed);
    EXPECT_THAT(parse({"--feed", "my feed.xml"}).feed, MatchesRegex("file:///.*/my%20feed.xml"));
    EXPECT_THAT(parse({"--feed", "--demo"}).feed, EndsWith("/--demo"));
    EXPECT_EQ("file:///feed.xml", parse({"--feed", "/feed.xml"}).feed);
}

TEST(Options, AValueThatIsNoneIsNamedAndChangesNothing) {
    for (const char* speed : {"", "0", "-1", "nan", "inf", "1e999", "1001", "2x", " 2", "fast", "0x10"}) {
        const Options options = parse({"--speed", speed});
        EXPECT_EQ(1, options.speed) << speed;
        EXPECT_THAT(options.complaints, ElementsAre(EndsWith(std::string("not ") + speed)));
    }
    EXPECT_EQ(1000, parse({"--speed=1000"}).speed);
    EXPECT_EQ(0.5, parse({"--speed=2", "--speed=.5"}).speed);
    for (const char* window : {"", "0", "0x0", "0x", "-5", "12w", "root", "99999999999999999999999"}) {
        const Options options = parse({"--window-id", window});
        EXPECT_FALSE(options.hostWindow) << window;
        EXPECT_EQ(1U, options.complaints.size()) << window;
    }
    for (const std::string address : {"quakes", "ftp://127.0.0.1/", "https://"})
        EXPECT_THAT(parse({"--service", address}).complaints, ElementsAre(EndsWith("not " + address)));
    for (const char* option : {"--speed", "--feed", "--window-id"})
        EXPECT_THAT(parse({option}).complaints, ElementsAre(HasSubstr(option))) << option;
}

TEST(Options, WhatIsUnknownIsNamedAndTheRestStillCounts) {
    const Options options = parse({"--colour=red", "demo", "-", "--", "", "--preview"});
    EXPECT_EQ(5U, options.complaints.size());
    EXPECT_THAT(options.complaints[0], EndsWith("--colour=red"));
    EXPECT_TRUE(options.preview);
}

TEST(Options, TheHostsEnvironmentNamesTheWindowWhereNoOptionDoes) {
    EXPECT_EQ(0x1400007UL, parse({"--root"}, "0x1400007").hostWindow);
    EXPECT_EQ(20971527UL, parse({"-root"}, "20971527").hostWindow);
    EXPECT_EQ(7UL, parse({"--window-id=7"}, "0x1400007").hostWindow);
    EXPECT_FALSE(parse({}, "").hostWindow);
    EXPECT_THAT(parse({}, "").complaints, IsEmpty());
    EXPECT_FALSE(parse({"--demo"}, "wayland-token-42").hostWindow);
    EXPECT_THAT(parse({}, "wayland-token-42").complaints, ElementsAre(HasSubstr("wayland-token-42")));
}
