#include "platform/TextEncoding.h"

#include <gtest/gtest.h>

#include "tests/support/Feed.h"

using namespace platform;

namespace {

std::optional<std::string> toMacRoman(std::string_view text) {
    return convertText(text, kCFStringEncodingUTF8, kCFStringEncodingMacRoman);
}

TEST(TextEncodingTest, TextGoesToMacRomanAndBackWhole) {
    std::string all;
    for (int c = 1; c < 256; ++c) all += static_cast<char>(c);
    const auto utf8 = convertText(all, kCFStringEncodingMacRoman, kCFStringEncodingUTF8);
    ASSERT_TRUE(utf8);
    EXPECT_EQ(toMacRoman(*utf8), all);
    EXPECT_EQ(toMacRoman(""), "");
    EXPECT_EQ(toMacRoman(repeated("a\xC3\xA9", 100'000)), repeated("a\x8E", 100'000));
}

TEST(TextEncodingTest, WhatCannotBeConvertedGivesNothing) {
    // A letter that is not there, no UTF-8, half a letter, half of a surrogate pair.
    for (const char* text : {"T\xC5\xABpuna", "\xFF", "cut \xC3", "\xED\xA0\x80"})
        EXPECT_EQ(toMacRoman(text), std::nullopt) << text;
    EXPECT_EQ(convertText("text", 0x7777, kCFStringEncodingUTF8), std::nullopt);
    for (const char* name : {"", "no-such-encoding", "ASCII//TRANSLIT", "utf-7", "UTF7"}) {
        EXPECT_EQ(convertText("text", "UTF-8", name), std::nullopt) << name;
        EXPECT_EQ(convertText("text", name, "UTF-8"), std::nullopt) << name;
    }
}

}  // namespace
