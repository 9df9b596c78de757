#include "platform/PrintableText.h"

#include <gmock/gmock.h>

#include "platform/Log.h"

using platform::printable;

TEST(PrintableTextTest, WhatATerminalWouldObeyIsReplacedAndAllElseStays) {
    const std::string words = "T\xC5\xABpuna 50% \xE6\xBC\xA2 \xF0\x9F\x8C\x8B";
    EXPECT_EQ(printable(words), words);
    EXPECT_EQ(printable("a\x1B[2Jb\r\n\tc\x7F"), "a [2Jb   c ");
    // C1 and the marks of direction, in UTF-8.
    for (const char* mark : {"\xC2\x80", "\xC2\x9B", "\xC2\x9F", "\xD8\x9C", "\xE2\x80\x8E", "\xE2\x80\x8F",
                             "\xE2\x80\xAA", "\xE2\x80\xAE", "\xE2\x81\xA6", "\xE2\x81\xA9"})
        EXPECT_EQ(printable(std::string("a") + mark + "b"), "a b");
    // C1 as a byte of its own, a character that is cut off, a null.
    for (const std::string& bytes : {std::string("\x9B"), std::string("\xE2\x80"), std::string(1, '\0')})
        EXPECT_THAT(printable("a" + bytes), testing::MatchesRegex("a(\xEF\xBF\xBD)+"));
}

TEST(PrintableTextTest, ALogLineIsPrintable) {
    testing::internal::CaptureStderr();
    platform::log("file \x1B]0;title\x07\n");
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "tellmar: file  ]0;title  \n");
}
