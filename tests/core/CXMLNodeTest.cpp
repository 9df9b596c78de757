#include "xml/CXMLNode.h"

#include <gtest/gtest.h>

#include "xml/CXMLDocumentNode.h"
#include "xml/CXMLElementNode.h"
#include "xml/CXMLProcInstNode.h"
#include "xml/CXMLTextNode.h"

namespace {

constexpr char kEuro[] = "\xE2\x82\xAC";

std::string keyOf(const CXMLNode& node, int size = CXMLNode::kTextBufferSize) {
    char buffer[1024] = "untouched";
    EXPECT_EQ(node.GetKey(buffer, size), buffer);
    return buffer;
}

TEST(CXMLNodeTest, TheKeyIsTheNodesString) {
    EXPECT_EQ(keyOf(CXMLElementNode("origin", kCFStringEncodingMacRoman)), "origin");
    EXPECT_EQ(keyOf(CXMLElementNode("\x8E", kCFStringEncodingMacRoman)), "\xC3\xA9");
    EXPECT_EQ(keyOf(CXMLTextNode("a<b", kCFStringEncodingUTF8)), "a&lt;b");
    EXPECT_EQ(keyOf(CXMLDocumentNode(kCFStringEncodingUTF8)), "XML_DOCUMENT");
    EXPECT_EQ(keyOf(CXMLProcInstNode()), "xml");
}

TEST(CXMLNodeTest, AKeyThatDoesNotFitIsCutBetweenCharacters) {
    const CXMLTextNode text((std::string("ab") + kEuro).c_str(), kCFStringEncodingUTF8);
    EXPECT_EQ(keyOf(text, 6), std::string("ab") + kEuro);
    EXPECT_EQ(keyOf(text, 5), "ab");
    EXPECT_EQ(keyOf(text, 3), "ab");
    EXPECT_EQ(keyOf(text, 1), "");
    EXPECT_EQ(keyOf(text, 0), "untouched");
    EXPECT_EQ(keyOf(text, -1), "untouched");
}

TEST(CXMLNodeTest, KeysMatchByteForByteUpTo255Bytes) {
    const CXMLElementNode element("origin", kCFStringEncodingUTF8);
    EXPECT_TRUE(element.VerifyKey("origin"));
    EXPECT_FALSE(element.VerifyKey("Origin"));
    EXPECT_FALSE(element.VerifyKey("origin "));
    EXPECT_FALSE(element.VerifyKey(""));
    const std::string longest(255, 'k'), tooLong(256, 'k');
    EXPECT_TRUE(CXMLTextNode(longest.c_str(), kCFStringEncodingUTF8).VerifyKey(longest.c_str()));
    EXPECT_FALSE(CXMLTextNode(tooLong.c_str(), kCFStringEncodingUTF8).VerifyKey(tooLong.c_str()));
}

TEST(CXMLNodeTest, NodesAreEqualWhenTheirStringsAre) {
    const CXMLElementNode element("same", kCFStringEncodingUTF8);
    EXPECT_TRUE(element == CXMLTextNode("same", kCFStringEncodingMacRoman));
    EXPECT_FALSE(element == CXMLElementNode("Same", kCFStringEncodingUTF8));
}

TEST(CXMLNodeTest, ATextOfAnotherEncodingLeavesANodeWithoutAString) {
    CXMLTextNode text("\xFF\xFE", kCFStringEncodingUTF8);
    EXPECT_EQ(keyOf(text), "untouched");
    EXPECT_FALSE(text.VerifyKey(""));
    EXPECT_EQ(text.GetTree(), nullptr);
    char buffer[16] = "untouched";
    text.GetValueAsString(buffer, sizeof buffer);
    EXPECT_STREQ(buffer, "untouched");
    EXPECT_EQ(text.GetValueAsDouble(), 0.0);
}

TEST(CXMLNodeTest, TheDeclarationHasNoValue) {
    CXMLProcInstNode declaration;
    char buffer[16] = "untouched";
    declaration.GetValueAsString(buffer, sizeof buffer);
    EXPECT_STREQ(buffer, "untouched");
    EXPECT_EQ(declaration.GetValueAsInteger(), 0);
    EXPECT_EQ(declaration.GetTree()->GetNode()->GetInfo().text, "version=\"1.0\"");
}

TEST(CXMLNodeTest, AChildsTreeOutlivesItsNode) {
    const CXMLElementNode parent("parent", kCFStringEncodingUTF8);
    {
        const CXMLElementNode child("child", kCFStringEncodingUTF8);
        parent.GetTree()->AppendChild(child.GetTree());
    }
    ASSERT_EQ(parent.GetTree()->GetChildCount(), 1u);
    EXPECT_EQ(parent.GetTree()->GetFirstChild()->GetNode()->GetString(), "child");
}

}  // namespace
