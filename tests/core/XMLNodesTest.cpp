#include <gmock/gmock.h>

#include <cmath>

#include "tests/support/Feed.h"
#include "xml/CXMLElementNode.h"
#include "xml/CXMLTextNode.h"

using namespace platform;

namespace {

using testing::ElementsAre;

CXMLTextNode textNode(const std::string& text) { return CXMLTextNode(text.c_str(), kCFStringEncodingUTF8); }

std::string keyOf(const CXMLNode& node, int size = CXMLNode::kTextBufferSize) {
    char buffer[CXMLNode::kTextBufferSize] = "untouched";
    EXPECT_EQ(node.GetKey(buffer, size), buffer);
    return buffer;
}

std::string stored(CXMLTextNode&& node) {
    char buffer[4096] = "untouched";
    node.GetValueAsString(buffer, sizeof buffer);
    return buffer;
}

TEST(CXMLNodeTest, AKeyIsTheNodesStringCutBetweenCharacters) {
    EXPECT_EQ(keyOf(CXMLElementNode("\x8E", kCFStringEncodingMacRoman)), "\xC3\xA9");
    EXPECT_EQ(keyOf(textNode("\xFF\xFE")), "untouched");          // not UTF-8
    EXPECT_EQ(CXMLTextNode("ascii", 0x7FFF).GetTree(), nullptr);  // an unknown encoding
    for (const auto& [size, key] : {std::pair{6, "ab\xE2\x82\xAC"}, {5, "ab"}, {1, ""}, {0, "untouched"}})
        EXPECT_EQ(keyOf(textNode("ab\xE2\x82\xAC"), size), key) << size;
}

TEST(CXMLNodeTest, KeysMatchByteForByteUpTo255Bytes) {
    const CXMLElementNode element("origin", kCFStringEncodingUTF8);
    EXPECT_TRUE(element.VerifyKey("origin") && element == textNode("origin"));
    EXPECT_FALSE(element.VerifyKey("Origin") || element == textNode("origin "));
    for (const int length : {255, 256}) {
        const std::string key = repeated("k", length);
        EXPECT_EQ(textNode(key).VerifyKey(key.c_str()), length == 255);
    }
}

TEST(CXMLTextNodeTest, TextsAreStoredEscapedButForLaterAmpersands) {
    EXPECT_EQ(stored(textNode("<&'>& it's")), "&lt;&amp;&apos;&gt;& it&apos;s");
    EXPECT_EQ(stored(textNode("&lt;")), "&amp;lt;");
    EXPECT_EQ(stored(CXMLTextNode("\x8E<", kCFStringEncodingMacRoman)), "\xC3\xA9&lt;");
    // In no more time than it takes to go over the text.
    EXPECT_EQ(textNode(repeated(">", 5'000'000)).GetTree()->GetNode()->GetString().size(), 20'000'000u);
}

TEST(CXMLTextNodeTest, NumbersAreStoredInDecimals) {
    EXPECT_EQ(stored(CXMLTextNode(3.0)), "3.00000");
    EXPECT_EQ(stored(CXMLTextNode(-1e300, 40)).size(), 1 + 301 + 1 + 40);
}

TEST(CXMLTextNodeTest, NumbersAreReadUpToTheFirstUnusableCharacter) {
    const auto read = [](const std::string& text) { return textNode(text).GetValueAsDouble(); };
    EXPECT_EQ(read(" \n-41.5abc"), -41.5);
    EXPECT_EQ(read("-1e999"), -HUGE_VAL);
    EXPECT_EQ(read("1e400 -5"), HUGE_VAL);
    EXPECT_EQ(read("2" + repeated(" ", 254)), 2);
    for (const std::string none : {"abc", "", "+-1", "--1", "-", "1e-999"}) EXPECT_EQ(read(none), 0) << none;
    EXPECT_EQ(textNode(" -42.9").GetValueAsInteger(), -42);
}

TEST(CXMLTreeNodeTest, ChildrenAreFoundByKeyInTheirOrder) {
    CXMLElementNode parent("parent", kCFStringEncodingUTF8);
    CXMLNode* const first = new CXMLElementNode("a", kCFStringEncodingUTF8);
    CXMLNode *const second = new CXMLElementNode("a", kCFStringEncodingUTF8), *const null = nullptr;
    for (CXMLNode* child : {null, first, second}) parent.AddChild(child);
    EXPECT_EQ(parent.GetChildForKey("a"), first);
    EXPECT_EQ(parent.GetChildForKey("b"), nullptr);
    std::vector<CXMLNode*> children{second, second};
    EXPECT_EQ(parent.GetChildren(children), 3);
    EXPECT_THAT(children, ElementsAre(null, first, second));
}

}  // namespace
