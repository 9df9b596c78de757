#include "xml/UXML.h"

#include <gtest/gtest.h>

#include <memory>

#include "tests/standins/StandIns.h"
#include "tests/standins/URLLoading.h"
#include "xml/CXMLDocument.h"
#include "xml/CXMLElementNode.h"
#include "xml/CXMLTextNode.h"

namespace {

constexpr char kURL[] = "http://feed.example/document";

class UXMLTest : public standins::Test {
  protected:
    ~UXMLTest() override { mDocument.DeleteTree(); }

    // The root element r of a document with that content.
    CXMLElementNode* read(const std::string& content) {
        standins::urlLoading().answers[kURL] = "<r>" + content + "</r>";
        const CFURL url{kURL};
        mDocument.Read(&url);
        return dynamic_cast<CXMLElementNode*>(mDocument.GetNodeByKey("r"));
    }

    static std::string valueOf(CXMLTreeNode* parent, const char* key, int size = 256) {
        char buffer[2048] = "";
        const bool found = UXML::GetValueAsStringForElementChildNode(parent, key, buffer, size);
        return found ? buffer : "(none)";
    }

    CXMLDocument mDocument;
};

CXMLNode* modelOf(CFXMLNodeTypeCode typeCode, const char* string) {
    return UXML::CreateCXMLNodeFromCFXMLNode(CFXMLNodeCreate(typeCode, string).get());
}

TEST_F(UXMLTest, OnlyElementsAndTextsBecomeModelNodes) {
    const std::unique_ptr<CXMLNode> element(modelOf(kCFXMLNodeTypeElement, "origin"));
    EXPECT_NE(dynamic_cast<CXMLElementNode*>(element.get()), nullptr);
    EXPECT_TRUE(element->VerifyKey("origin"));
    const std::unique_ptr<CXMLNode> text(modelOf(kCFXMLNodeTypeText, "it's"));
    EXPECT_NE(dynamic_cast<CXMLTextNode*>(text.get()), nullptr);
    EXPECT_TRUE(text->VerifyKey("it&apos;s"));
    for (const auto typeCode :
         {kCFXMLNodeTypeDocument, kCFXMLNodeTypeProcessingInstruction, kCFXMLNodeTypeComment,
          kCFXMLNodeTypeCDATASection, kCFXMLNodeTypeEntityReference, kCFXMLNodeTypeDocumentType}) {
        EXPECT_EQ(modelOf(typeCode, "string"), nullptr);
    }
    EXPECT_EQ(UXML::CreateCXMLNodeFromCFXMLNode(nullptr), nullptr);
}

TEST_F(UXMLTest, ModelElementsHaveNoAttributes) {
    const CFXMLNodeRef parsed =
        CFXMLNodeCreate(kCFXMLNodeTypeElement, "a", CFXMLNodeInfo{.text = "b=\"1\"", .isEmpty = true});
    const std::unique_ptr<CXMLNode> element(UXML::CreateCXMLElementNodeFromCFXMLNode(parsed.get()));
    EXPECT_EQ(element->GetTree()->GetNode()->GetInfo().text, "");
    EXPECT_FALSE(element->GetTree()->GetNode()->GetInfo().isEmpty);
    EXPECT_EQ(parsed->GetInfo().text, "b=\"1\"");
}

TEST_F(UXMLTest, ANewElementBelongsToItsParent) {
    CXMLElementNode* root = read("");
    CXMLElementNode* child = UXML::CreateCXMLElementNodeForParentNode(mDocument, root, "\x8E");
    EXPECT_EQ(UXML::GetChildNodeWithKey(root, "\xC3\xA9"), child);
    EXPECT_EQ(mDocument.GetNodeByKey("\xC3\xA9"), child);
}

TEST_F(UXMLTest, ValuesAreThoseOfTheFirstElementOfThatName) {
    CXMLElementNode* root = read("<value>-41.5</value><value>7</value><text>a &lt; b's</text>");
    EXPECT_EQ(UXML::GetValueAsDoubleForElementChildNode(root, "value"), -41.5);
    EXPECT_EQ(UXML::GetValueAsIntegerForElementChildNode(root, "value"), -41);
    EXPECT_EQ(valueOf(root, "value"), "-41.5");
    EXPECT_EQ(valueOf(root, "text"), "a ");
}

TEST_F(UXMLTest, WhatIsMissingIsNeutral) {
    CXMLElementNode* root =
        read("named<empty/><nested><inner>1</inner>2</nested><cdata><![CDATA[3]]></cdata><ref>&#52;</ref>");
    for (const char* key : {"missing", "named", "empty", "nested", "cdata", "ref"}) {
        EXPECT_EQ(UXML::GetValueAsDoubleForElementChildNode(root, key), 0.0) << key;
        EXPECT_EQ(UXML::GetValueAsIntegerForElementChildNode(root, key), 0) << key;
        EXPECT_EQ(valueOf(root, key), "(none)") << key;
    }
    EXPECT_EQ(UXML::GetChildNodeWithKey(nullptr, "key"), nullptr);
    EXPECT_EQ(UXML::GetTextChildNodeOfElement(nullptr), nullptr);
}

TEST_F(UXMLTest, ACommentBeforeTheTextDoesNotHideIt) {
    EXPECT_EQ(valueOf(read("<value><!-- degrees -->12<!-- --></value>"), "value"), "12");
}

TEST_F(UXMLTest, ATextThatDoesNotFitIsFoundButLeavesTheBufferAlone) {
    const std::string text(1500, 'x');
    CXMLElementNode* root = read("<value>" + text + "</value>");
    EXPECT_EQ(valueOf(root, "value"), "");
    EXPECT_EQ(valueOf(root, "value", 1501), text);
}

}  // namespace
