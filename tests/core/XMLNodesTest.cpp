#include <gmock/gmock.h>

#include <cmath>

#include "tests/support/Feed.h"
#include "xml/CXMLElementNode.h"
#include "xml/CXMLTextNode.h"
#include "xml/UXML.h"
#include "xml/XMLSerializer.h"

using namespace platform;

namespace {

using testing::ElementsAre;

CXMLTextNode textNode(const std::string& text) { return CXMLTextNode(text.c_str(), kCFStringEncodingUTF8); }
CXMLElementNode* newElement(const char* name) { return new CXMLElementNode(name, kCFStringEncodingUTF8); }

std::string keyOf(const CXMLNode& node, int size = CXMLNode::kTextBufferSize) {
    char buffer[CXMLNode::kTextBufferSize] = "untouched";
    EXPECT_EQ(node.GetKey(buffer, size), buffer);
    return buffer;
}

std::string stored(CXMLTextNode&& node, int size = 4096) {
    char buffer[4096] = "untouched";
    node.GetValueAsString(buffer, size);
    return buffer;
}

TEST(CXMLNodeTest, AKeyIsTheNodesStringCutBetweenCharacters) {
    EXPECT_EQ(keyOf(CXMLElementNode("\x8E", kCFStringEncodingMacRoman)), "\xC3\xA9");
    EXPECT_EQ(keyOf(textNode("\xFF\xFE")), "untouched");          // not UTF-8
    EXPECT_EQ(CXMLTextNode("ascii", 0x7FFF).GetTree(), nullptr);  // an unknown encoding
    const std::pair<int, const char*> cases[] = {{6, "ab\xE2\x82\xAC"}, {5, "ab"},        {3, "ab"}, {1, ""},
                                                 {0, "untouched"},      {-1, "untouched"}};
    for (const auto& [size, key] : cases) EXPECT_EQ(keyOf(textNode("ab\xE2\x82\xAC"), size), key) << size;
}

TEST(CXMLNodeTest, KeysMatchByteForByteUpTo255Bytes) {
    const CXMLElementNode element("origin", kCFStringEncodingUTF8);
    EXPECT_TRUE(element.VerifyKey("origin") && element == textNode("origin"));
    for (const char* other : {"Origin", "origin ", "origi", ""})
        EXPECT_FALSE(element.VerifyKey(other) || element == textNode(other)) << other;
    for (const int length : {255, 256}) {
        const std::string key = repeated("k", length);
        EXPECT_EQ(textNode(key).VerifyKey(key.c_str()), length == 255);
    }
}

TEST(CXMLTextNodeTest, TextsAreStoredEscapedButForLaterAmpersands) {
    const std::pair<std::string, std::string> cases[] = {{"x&y&z", "x&amp;y&z"},
                                                         {"\"it's\"", "\"it&apos;s\""},
                                                         {"<&'>&", "&lt;&amp;&apos;&gt;&"},
                                                         {"&lt;", "&amp;lt;"},
                                                         {"", ""},
                                                         {repeated("'", 300), repeated("&apos;", 300)}};
    for (const auto& [text, escaped] : cases) EXPECT_EQ(stored(textNode(text)), escaped) << text;
    EXPECT_EQ(stored(CXMLTextNode("\x8E<", kCFStringEncodingMacRoman)), "\xC3\xA9&lt;");
    // In no more time than it takes to go over the text.
    EXPECT_EQ(textNode(repeated(">", 5'000'000)).GetTree()->GetNode()->GetString().size(), 20'000'000u);
}

TEST(CXMLTextNodeTest, NumbersAreStoredInDecimals) {
    EXPECT_EQ(stored(CXMLTextNode(3.0)), "3.00000");
    EXPECT_EQ(stored(CXMLTextNode(-3.14159, 2)), "-3.14");
    EXPECT_EQ(stored(CXMLTextNode(-7)), "-7");
    EXPECT_EQ(stored(CXMLTextNode(-1e300, 40)).size(), 1 + 301 + 1 + 40);
}

TEST(CXMLTextNodeTest, NumbersAreReadUpToTheFirstUnusableCharacter) {
    const auto read = [](const std::string& text) { return textNode(text).GetValueAsDouble(); };
    EXPECT_EQ(read("12.5abc"), 12.5);
    EXPECT_EQ(read(" \n-41.5 "), -41.5);
    EXPECT_EQ(read("+1e2"), 100);
    EXPECT_EQ(read("0x1A"), 26);
    EXPECT_EQ(read("-1e999"), -HUGE_VAL);
    EXPECT_EQ(read("1e400 -5"), HUGE_VAL);
    EXPECT_EQ(read("2" + repeated(" ", 254)), 2);
    EXPECT_EQ(read("2" + repeated(" ", 255)), 0);
    for (const std::string none : {"abc", "", "+-1", "--1", "-", "1e-999", "&amp;1"})
        EXPECT_EQ(read(none), 0) << none;
    EXPECT_TRUE(std::isnan(read("nan")));
    EXPECT_EQ(textNode(" -42.9").GetValueAsInteger(), -42);
    for (const std::string& none : {std::string("abc"), repeated("1", 256)})
        EXPECT_EQ(textNode(none).GetValueAsInteger(), 0);
}

TEST(CXMLTextNodeTest, AValueThatDoesNotFitLeavesTheBufferAlone) {
    for (const int size : {5, 1, 0, -1}) EXPECT_EQ(stored(textNode("12345"), size), "untouched") << size;
    EXPECT_EQ(stored(textNode("12345"), 6), "12345");
}

TEST(CXMLTreeNodeTest, ChildrenAreFoundByKeyInTheirOrder) {
    CXMLElementNode parent("parent", kCFStringEncodingUTF8);
    CXMLNode *const first = newElement("a"), *const second = newElement("a"), *const null = nullptr;
    for (CXMLNode* child : {null, first, second}) parent.AddChild(child);
    EXPECT_EQ(parent.GetChildForKey("a"), first);
    EXPECT_EQ(parent.GetChildForKey("b"), nullptr);

    std::vector<CXMLNode*> children{second, second};
    EXPECT_EQ(parent.GetChildren(children), 3);
    EXPECT_THAT(children, ElementsAre(null, first, second));
}

TEST(CXMLTreeNodeTest, ChildrenAreThereUntilTheirParentsOwnDestructorHasRun) {
    static int childrenAtTheEnd;
    struct Parent : CXMLTreeNode {
        ~Parent() override {
            std::vector<CXMLNode*> children;
            childrenAtTheEnd = GetChildren(children);
        }
    };
    std::make_unique<Parent>()->AddChild(newElement("a"));
    EXPECT_EQ(childrenAtTheEnd, 1);
}

TEST(CXMLTreeNodeTest, ATreeOutlivesItsNodesHoweverDeepItIs) {
    constexpr int kDepth = 100'000;
    CXMLElementNode* const root = newElement("root");
    const CFXMLTreeRef tree(root->GetTree());
    CXMLElementNode* last = root;
    for (int depth = 0; depth < kDepth; ++depth) {
        CXMLElementNode* const child = newElement("a");
        last->AddChild(child);
        last->GetTree()->AppendChild(child->GetTree());
        last = child;
    }
    delete root;
    EXPECT_EQ(serializeXML(tree.get()), repeated("<a>", kDepth) + repeated("</a>", kDepth));
}

TEST(UXMLTest, ANodeIsMadeOfItsOwnKindAlone) {
    for (const auto kind : {kCFXMLNodeTypeElement, kCFXMLNodeTypeText, kCFXMLNodeTypeComment}) {
        const auto node = CFXMLNodeCreate(kind, "a");
        const std::unique_ptr<CXMLNode> element(UXML::CreateCXMLElementNodeFromCFXMLNode(node.get()));
        const std::unique_ptr<CXMLNode> text(UXML::CreateCXMLTextNodeFromCFXMLNode(node.get()));
        EXPECT_EQ(element != nullptr, kind == kCFXMLNodeTypeElement);
        EXPECT_EQ(text != nullptr, kind == kCFXMLNodeTypeText);
    }
    EXPECT_EQ(UXML::CreateCXMLElementNodeFromCFXMLNode(nullptr), nullptr);
}

}  // namespace
