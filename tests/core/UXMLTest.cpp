#include "xml/UXML.h"

#include "tests/standins/StandIns.h"
#include "xml/CXMLDocument.h"
#include "xml/CXMLElementNode.h"

namespace {

class UXMLTest : public standins::Test {
  protected:
    ~UXMLTest() override { mDocument.DeleteTree(); }

    // The root element r of a document with that content.
    CXMLElementNode* read(const std::string& content) {
        standins::desktop.answerToAll = "<r>" + content + "</r>";
        const CFURL url{"http://feed.example/document"};
        mDocument.Read(&url);
        return dynamic_cast<CXMLElementNode*>(mDocument.GetNodeByKey("r"));
    }

    static std::string valueOf(CXMLTreeNode* parent, const char* key) {
        char buffer[256] = "";
        const bool found = UXML::GetValueAsStringForElementChildNode(parent, key, buffer, sizeof buffer);
        return found ? buffer : "(none)";
    }

    CXMLDocument mDocument;
};

TEST_F(UXMLTest, ValuesAreThoseOfTheFirstElementOfThatName) {
    CXMLElementNode* root = read(
        "<value>-41.5</value><value>7</value><text>a &lt; b's</text>"
        "<degrees><!-- north -->12<!-- --></degrees>");
    EXPECT_EQ(UXML::GetValueAsDoubleForElementChildNode(root, "value"), -41.5);
    EXPECT_EQ(UXML::GetValueAsIntegerForElementChildNode(root, "value"), -41);
    EXPECT_EQ(valueOf(root, "value"), "-41.5");
    EXPECT_EQ(valueOf(root, "text"), "a ");
    EXPECT_EQ(valueOf(root, "degrees"), "12");

    CXMLElementNode* child = UXML::CreateCXMLElementNodeForParentNode(mDocument, root, "\x8E");
    EXPECT_EQ(UXML::GetChildNodeWithKey(root, "\xC3\xA9"), child);
}

TEST_F(UXMLTest, WhatIsMissingIsNeutral) {
    CXMLElementNode* root =
        read("named<empty/><nested><inner>1</inner>2</nested><cdata><![CDATA[3]]></cdata><ref>&#52;</ref>");
    for (const char* key : {"missing", "named", "empty", "nested", "cdata", "ref"}) {
        EXPECT_EQ(UXML::GetValueAsDoubleForElementChildNode(root, key), 0.0) << key;
        EXPECT_EQ(UXML::GetValueAsIntegerForElementChildNode(root, key), 0) << key;
        EXPECT_EQ(valueOf(root, key), "(none)") << key;
    }
    EXPECT_EQ(UXML::CreateCXMLNodeFromCFXMLNode(nullptr), nullptr);
    EXPECT_EQ(UXML::GetChildNodeWithKey(nullptr, "key"), nullptr);
    EXPECT_EQ(UXML::GetTextChildNodeOfElement(nullptr), nullptr);
}

}  // namespace
