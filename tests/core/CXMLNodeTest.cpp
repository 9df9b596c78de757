#include "xml/CXMLNode.h"

#include <gtest/gtest.h>

#include "xml/CXMLDocumentNode.h"
#include "xml/CXMLElementNode.h"
#include "xml/CXMLProcInstNode.h"
#include "xml/CXMLTextNode.h"

using namespace platform;

namespace {

std::string keyOf(const CXMLNode& node, int size = CXMLNode::kTextBufferSize) {
    char buffer[1024] = "untouched";
    EXPECT_EQ(node.GetKey(buffer, size), buffer);
    return buffer;
}

TEST(CXMLNodeTest, TheKeyIsTheNodesStringCutBetweenCharacters) {
    EXPECT_EQ(keyOf(CXMLElementNode("\x8E", kCFStringEncodingMacRoman)), "\xC3\xA9");
    EXPECT_EQ(keyOf(CXMLTextNode("a<b", kCFStringEncodingUTF8)), "a&lt;b");
    EXPECT_EQ(keyOf(CXMLDocumentNode(kCFStringEncodingUTF8)), "XML_DOCUMENT");
    EXPECT_EQ(keyOf(CXMLProcInstNode()), "xml");

    const CXMLTextNode text("ab\xE2\x82\xAC", kCFStringEncodingUTF8);
    const std::pair<int, const char*> cases[] = {{6, "ab\xE2\x82\xAC"}, {5, "ab"},        {3, "ab"}, {1, ""},
                                                 {0, "untouched"},      {-1, "untouched"}};
    for (const auto& [size, key] : cases) EXPECT_EQ(keyOf(text, size), key) << size;
}

TEST(CXMLNodeTest, KeysMatchByteForByteUpTo255BytesAndNodesByTheirStrings) {
    const CXMLElementNode element("origin", kCFStringEncodingUTF8);
    EXPECT_TRUE(element.VerifyKey("origin"));
    for (const char* other : {"Origin", "origin ", "origi", ""}) EXPECT_FALSE(element.VerifyKey(other));
    for (const std::size_t length : {255, 256}) {
        const std::string key(length, 'k');
        EXPECT_EQ(CXMLTextNode(key.c_str(), kCFStringEncodingUTF8).VerifyKey(key.c_str()), length == 255);
    }
    EXPECT_TRUE(element == CXMLTextNode("origin", kCFStringEncodingMacRoman));
    EXPECT_FALSE(element == CXMLElementNode("Origin", kCFStringEncodingUTF8));
}

TEST(CXMLNodeTest, ATextOfAnotherEncodingLeavesANodeWithoutAString) {
    CXMLTextNode text("\xFF\xFE", kCFStringEncodingUTF8);
    EXPECT_EQ(keyOf(text), "untouched");
    EXPECT_FALSE(text.VerifyKey(""));
    EXPECT_EQ(text.GetTree(), nullptr);
    EXPECT_EQ(text.GetValueAsDouble(), 0.0);
    constexpr CFStringEncoding kUnknown = 0x7FFF;
    EXPECT_EQ(CXMLTextNode("ascii", kUnknown).GetTree(), nullptr);
}

}  // namespace
