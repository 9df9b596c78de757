#include "xml/CXMLTextNode.h"

#include <gtest/gtest.h>

#include <clocale>
#include <cmath>

namespace {

std::string stored(CXMLTextNode&& node) {
    char buffer[4096] = "untouched";
    node.GetValueAsString(buffer, sizeof buffer);
    return buffer;
}

std::string storedText(const std::string& text) {
    return stored(CXMLTextNode(text.c_str(), kCFStringEncodingUTF8));
}

double asDouble(const char* text) { return CXMLTextNode(text, kCFStringEncodingUTF8).GetValueAsDouble(); }

int asInteger(const char* text) { return CXMLTextNode(text, kCFStringEncodingUTF8).GetValueAsInteger(); }

TEST(CXMLTextNodeTest, TextsAreStoredEscapedButForLaterAmpersands) {
    EXPECT_EQ(storedText("x&y&z"), "x&amp;y&z");
    EXPECT_EQ(storedText("1<2>3<4"), "1&lt;2&gt;3&lt;4");
    EXPECT_EQ(storedText("\"it's\""), "\"it&apos;s\"");
    EXPECT_EQ(storedText("<&'>&"), "&lt;&amp;&apos;&gt;&");
    EXPECT_EQ(storedText("&lt;"), "&amp;lt;");
    EXPECT_EQ(storedText(""), "");
    std::string escaped;
    for (int index = 0; index < 300; ++index) escaped += "&apos;";
    EXPECT_EQ(storedText(std::string(300, '\'')), escaped);
    EXPECT_EQ(stored(CXMLTextNode("\x8E<", kCFStringEncodingMacRoman)), "\xC3\xA9&lt;");

    char inPlace[32] = "a<b & 'c'&";
    CXMLTextNode::ReplaceSpecialCharacters(inPlace);
    EXPECT_STREQ(inPlace, "a&lt;b &amp; &apos;c&apos;&");
}

TEST(CXMLTextNodeTest, EscapingAHugeTextTakesNoLongerThanItMust) {
    const std::string brackets(5'000'000, '>');
    const CXMLTextNode text(brackets.c_str(), kCFStringEncodingUTF8);
    EXPECT_EQ(text.GetTree()->GetNode()->GetString().size(), 4 * brackets.size());
}

TEST(CXMLTextNodeTest, NumbersAreStoredInDecimals) {
    EXPECT_EQ(stored(CXMLTextNode(3.0)), "3.00000");
    EXPECT_EQ(stored(CXMLTextNode(3.14159, 2)), "3.14");
    EXPECT_EQ(stored(CXMLTextNode(-0.5, 0)), "-0");
    EXPECT_EQ(stored(CXMLTextNode(-7)), "-7");
    EXPECT_EQ(stored(CXMLTextNode(-1e300, 40)).size(), 1 + 301 + 1 + 40);
}

TEST(CXMLTextNodeTest, NumbersAreReadUpToTheFirstUnusableCharacter) {
    EXPECT_EQ(asDouble("12.5abc"), 12.5);
    EXPECT_EQ(asDouble(" \n-41.5 "), -41.5);
    EXPECT_EQ(asDouble("+1e2"), 100.0);
    EXPECT_EQ(asDouble(".5"), 0.5);
    EXPECT_EQ(asDouble("0x1A"), 26.0);
    for (const char* text : {"abc", "", "+-1", "--1", "-", "1e-999", "&amp;1"})
        EXPECT_EQ(asDouble(text), 0.0);
    EXPECT_EQ(asDouble("-1e999"), -HUGE_VAL);
    EXPECT_TRUE(std::isnan(asDouble("nan")));
    EXPECT_EQ(asInteger(" -42.9"), -42);
    EXPECT_EQ(asInteger("abc"), 0);
    EXPECT_EQ(asInteger(""), 0);
}

TEST(CXMLTextNodeTest, TheDecimalPointIsAPointInEveryLocale) {
    const std::string before = std::setlocale(LC_NUMERIC, nullptr);
    if (!std::setlocale(LC_NUMERIC, "de_DE.UTF-8")) GTEST_SKIP() << "no locale with a decimal comma here";
    EXPECT_EQ(asDouble("12.5"), 12.5);
    EXPECT_EQ(stored(CXMLTextNode(12.5, 1)), "12.5");
    std::setlocale(LC_NUMERIC, before.c_str());
}

TEST(CXMLTextNodeTest, AValueThatDoesNotFitLeavesTheBufferAlone) {
    CXMLTextNode text("12345", kCFStringEncodingUTF8);
    char buffer[16] = "untouched";
    for (int size : {5, 1, 0, -1}) {
        text.GetValueAsString(buffer, size);
        EXPECT_STREQ(buffer, "untouched") << size;
    }
    text.GetValueAsString(buffer, 6);
    EXPECT_STREQ(buffer, "12345");
    EXPECT_EQ(asInteger(std::string(255, '1').insert(0, "0").c_str()), 0);
    EXPECT_EQ(asDouble(("2" + std::string(255, ' ')).c_str()), 0.0);
    EXPECT_EQ(asDouble(("2" + std::string(254, ' ')).c_str()), 2.0);
}

}  // namespace
