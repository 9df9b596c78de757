#include "xml/CXMLTextNode.h"

#include <gtest/gtest.h>

#include <clocale>
#include <cmath>

#include "tests/support/Feed.h"

namespace {

CXMLTextNode node(const std::string& text) {
    return CXMLTextNode(text.c_str(), platform::kCFStringEncodingUTF8);
}

std::string stored(CXMLTextNode&& node) {
    char buffer[4096] = "untouched";
    node.GetValueAsString(buffer, sizeof buffer);
    return buffer;
}

TEST(CXMLTextNodeTest, TextsAreStoredEscapedButForLaterAmpersands) {
    const std::pair<std::string, std::string> cases[] = {{"x&y&z", "x&amp;y&z"},
                                                         {"1<2>3<4", "1&lt;2&gt;3&lt;4"},
                                                         {"\"it's\"", "\"it&apos;s\""},
                                                         {"<&'>&", "&lt;&amp;&apos;&gt;&"},
                                                         {"&lt;", "&amp;lt;"},
                                                         {"", ""},
                                                         {repeated("'", 300), repeated("&apos;", 300)}};
    for (const auto& [text, escaped] : cases) EXPECT_EQ(stored(node(text)), escaped) << text;
    EXPECT_EQ(stored(CXMLTextNode("\x8E<", platform::kCFStringEncodingMacRoman)), "\xC3\xA9&lt;");
    // In no more time than it takes to go over the text.
    EXPECT_EQ(node(std::string(5'000'000, '>')).GetTree()->GetNode()->GetString().size(), 20'000'000u);
}

// Numbers have a point, also where the locale has a comma (where that locale is installed).
struct CXMLTextNodeNumbersTest : testing::Test {
    CXMLTextNodeNumbersTest() { std::setlocale(LC_NUMERIC, "de_DE.UTF-8"); }
    ~CXMLTextNodeNumbersTest() override { std::setlocale(LC_NUMERIC, "C"); }
};

TEST_F(CXMLTextNodeNumbersTest, AreStoredInDecimals) {
    EXPECT_EQ(stored(CXMLTextNode(3.0)), "3.00000");
    EXPECT_EQ(stored(CXMLTextNode(3.14159, 2)), "3.14");
    EXPECT_EQ(stored(CXMLTextNode(-0.5, 0)), "-0");
    EXPECT_EQ(stored(CXMLTextNode(-7)), "-7");
    EXPECT_EQ(stored(CXMLTextNode(-1e300, 40)).size(), 1 + 301 + 1 + 40);
}

TEST_F(CXMLTextNodeNumbersTest, AreReadUpToTheFirstUnusableCharacter) {
    const auto read = [](const std::string& text) { return node(text).GetValueAsDouble(); };
    EXPECT_EQ(read("12.5abc"), 12.5);
    EXPECT_EQ(read(" \n-41.5 "), -41.5);
    EXPECT_EQ(read("+1e2"), 100);
    EXPECT_EQ(read(".5"), 0.5);
    EXPECT_EQ(read("0x1A"), 26);
    EXPECT_EQ(read("1e999"), HUGE_VAL);
    EXPECT_EQ(read("-1e999"), -HUGE_VAL);
    EXPECT_EQ(read("1e400 -5"), HUGE_VAL);
    EXPECT_EQ(read("1e-400 5"), 0);
    EXPECT_EQ(read("2" + repeated(" ", 254)), 2);
    EXPECT_EQ(read("2" + repeated(" ", 255)), 0);
    for (const std::string none : {"abc", "", "+-1", "--1", "-", "1e-999", "&amp;1"})
        EXPECT_EQ(read(none), 0) << none;
    EXPECT_TRUE(std::isnan(read("nan")));
    EXPECT_EQ(node(" -42.9").GetValueAsInteger(), -42);
    for (const std::string& none : {std::string("abc"), "0" + repeated("1", 255)})
        EXPECT_EQ(node(none).GetValueAsInteger(), 0);
}

TEST(CXMLTextNodeTest, AValueThatDoesNotFitLeavesTheBufferAlone) {
    char buffer[16] = "untouched";
    for (int size : {5, 1, 0, -1}) {
        node("12345").GetValueAsString(buffer, size);
        EXPECT_STREQ(buffer, "untouched") << size;
    }
    node("12345").GetValueAsString(buffer, 6);
    EXPECT_STREQ(buffer, "12345");
}

}  // namespace
