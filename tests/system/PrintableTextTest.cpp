#include "platform/PrintableText.h"

#include <gtest/gtest.h>

#include "platform/Log.h"

TEST(PrintableTextTest, WhatATerminalWouldObeyIsReplacedInALogLineToo) {
    testing::internal::CaptureStderr();
    platform::log("\x1B]0;title\x07\r\n\tT\xC5\xABpuna \xF0\x9F\x8C\x8B 50%");
    EXPECT_EQ(testing::internal::GetCapturedStderr(),
              "tellmar:  ]0;title    T\xC5\xABpuna \xF0\x9F\x8C\x8B 50%\n");
    // C1 and the marks of direction; then C1 as a byte of its own and a character that is cut off.
    for (const char* mark : {"\xC2\x80", "\xC2\x9F", "\xD8\x9C", "\xE2\x80\x8E", "\xE2\x80\x8F",
                             "\xE2\x80\xAA", "\xE2\x80\xAE", "\xE2\x81\xA6", "\xE2\x81\xA9"})
        EXPECT_EQ(platform::printable(mark), " ");
    for (const char* bytes : {"\x9B", "\xE2\x80"})
        EXPECT_EQ(platform::printable(bytes).find(bytes), std::string::npos);
}
