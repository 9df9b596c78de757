#include "xml/UXML.h"

#include "tests/standins/StandIns.h"
#include "xml/CXMLDocument.h"
#include "xml/CXMLElementNode.h"
#include "xml/CXMLTextNode.h"

namespace {

class UXMLTest : public standins::Test {
  protected:
    ~UXMLTest() override { mDocument.DeleteTree(); }

    CXMLDocument mDocument;
};

TEST_F(UXMLTest, ValuesAreThoseOfTheFirstElementOfThatNameAndNeutralWithoutAPlainText) {
    standins::desktop.answerToAll =
        "<r>named<value>-41.5</value><value>7</value><text>a &lt; b's</text><degrees><!-- north "
        "-->12</degrees>"
        "<empty/><nested><inner>1</inner>2</nested><cdata><![CDATA[3]]></cdata><ref>&#52;</ref></r>";
    const platform::CFURL url{"http://feed.example/document"};
    mDocument.Read(&url);
    auto* const root = dynamic_cast<CXMLElementNode*>(mDocument.GetNodeByKey("r"));
    const auto read = [&](const char* key) {
        char buffer[256] = "(none)";
        const bool found = UXML::GetValueAsStringForElementChildNode(root, key, buffer, sizeof buffer);
        EXPECT_EQ(found, buffer != std::string("(none)"));
        return std::string(buffer);
    };
    EXPECT_EQ(UXML::GetValueAsDoubleForElementChildNode(root, "value"), -41.5);
    EXPECT_EQ(UXML::GetValueAsIntegerForElementChildNode(root, "value"), -41);
    EXPECT_EQ(read("value"), "-41.5");
    EXPECT_EQ(read("text"), "a ");
    EXPECT_EQ(read("degrees"), "12");
    for (const char* key : {"missing", "named", "empty", "nested", "cdata", "ref"}) {
        EXPECT_EQ(UXML::GetValueAsDoubleForElementChildNode(root, key), 0.0) << key;
        EXPECT_EQ(UXML::GetValueAsIntegerForElementChildNode(root, key), 0) << key;
        EXPECT_EQ(read(key), "(none)") << key;
    }
}

TEST_F(UXMLTest, ANodeIsMadeOfItsOwnKindAlone) {
    for (const auto kind :
         {platform::kCFXMLNodeTypeElement, platform::kCFXMLNodeTypeText, platform::kCFXMLNodeTypeComment}) {
        const auto node = platform::CFXMLNodeCreate(kind, "a");
        const std::unique_ptr<CXMLNode> element(UXML::CreateCXMLElementNodeFromCFXMLNode(node.get()));
        const std::unique_ptr<CXMLNode> text(UXML::CreateCXMLTextNodeFromCFXMLNode(node.get()));
        EXPECT_EQ(element != nullptr, kind == platform::kCFXMLNodeTypeElement);
        EXPECT_EQ(text != nullptr, kind == platform::kCFXMLNodeTypeText);
    }
    EXPECT_EQ(UXML::CreateCXMLElementNodeFromCFXMLNode(nullptr), nullptr);
}

TEST_F(UXMLTest, ANewElementBelongsToItsParentAndNullToNobody) {
    auto* const root = dynamic_cast<CXMLTreeNode*>(mDocument.GetNodeByKey("XML_DOCUMENT"));
    CXMLElementNode* child = UXML::CreateCXMLElementNodeForParentNode(mDocument, root, "\x8E");
    EXPECT_EQ(UXML::GetChildNodeWithKey(root, "\xC3\xA9"), child);
    EXPECT_EQ(UXML::CreateCXMLNodeFromCFXMLNode(nullptr), nullptr);
    EXPECT_EQ(UXML::GetChildNodeWithKey(nullptr, "key"), nullptr);
    EXPECT_EQ(UXML::GetTextChildNodeOfElement(nullptr), nullptr);
}

}  // namespace
