#include "xml/CXMLDocument.h"

#include <gmock/gmock.h>

#include <fstream>
#include <sstream>

#include "platform/Files.h"
#include "platform/URLLoading.h"
#include "support/FSRef.h"
#include "tests/TemporaryFolder.h"
#include "tests/standins/StandIns.h"
#include "tests/standins/URLLoading.h"
#include "xml/CXMLDocumentNode.h"
#include "xml/CXMLElementNode.h"
#include "xml/CXMLProcInstNode.h"
#include "xml/CXMLTextNode.h"

namespace {

using testing::ElementsAre;
using testing::ExitedWithCode;
using testing::HasSubstr;
using testing::IsEmpty;

constexpr char kURL[] = "http://feed.example/document";

std::string contents(const std::string& path) {
    std::ostringstream text;
    text << std::ifstream(path).rdbuf();
    return text.str();
}

std::string keyOf(const CXMLNode* node) {
    char buffer[CXMLNode::kTextBufferSize] = "";
    return node->GetKey(buffer, sizeof buffer);
}

CXMLElementNode* newElement(const char* name) { return new CXMLElementNode(name, kCFStringEncodingUTF8); }

CXMLTextNode* newText(const char* text) { return new CXMLTextNode(text, kCFStringEncodingUTF8); }

class CXMLDocumentTest : public standins::Test {
  protected:
    ~CXMLDocumentTest() override { mDocument.DeleteTree(); }

    void read(const std::string& bytes) {
        standins::urlLoading().answers[kURL] = bytes;
        const CFURL url{kURL};
        mDocument.Read(&url);
    }

    CXMLTreeNode* root() { return dynamic_cast<CXMLTreeNode*>(mDocument.GetNodeByKey("XML_DOCUMENT")); }

    std::vector<std::string> keysOfChildren(CXMLNode* node) {
        std::vector<CXMLNode*> children;
        dynamic_cast<CXMLTreeNode*>(node)->GetChildren(children);
        std::vector<std::string> keys;
        for (const CXMLNode* child : children) keys.push_back(keyOf(child));
        return keys;
    }

    std::vector<CXMLNode*> nodesWithKey(const char* key) {
        std::vector<CXMLNode*> nodes;
        mDocument.GetNodesWithKey(key, nodes);
        return nodes;
    }

    std::string written() {
        const TemporaryFolder folder;
        return mDocument.Write(folder.path("file").c_str()) ? contents(folder.path("file")) : "(none)";
    }

    CXMLDocument mDocument;
};

TEST_F(CXMLDocumentTest, AFreshDocumentIsItsDeclaration) {
    EXPECT_NE(dynamic_cast<CXMLDocumentNode*>(mDocument.GetNodeByKey("XML_DOCUMENT")), nullptr);
    EXPECT_NE(dynamic_cast<CXMLProcInstNode*>(mDocument.GetNodeByKey("xml")), nullptr);
    EXPECT_THAT(keysOfChildren(root()), ElementsAre("xml"));
    EXPECT_EQ(written(), "<?xml version=\"1.0\"?>");
}

TEST_F(CXMLDocumentTest, AddedNodesAreOwnedFoundAndWritten) {
    CXMLElementNode* quake = newElement("quake");
    mDocument.AddNode(root(), quake);
    mDocument.AddNode("quake", newText("a<b & c"));
    mDocument.AddNode("quake", newElement("empty"));
    EXPECT_EQ(mDocument.GetNodeByKey("quake"), quake);
    EXPECT_THAT(keysOfChildren(quake), ElementsAre("a&lt;b &amp; c", "empty"));
    EXPECT_EQ(written(), "<?xml version=\"1.0\"?><quake>a&lt;b &amp; c<empty></empty></quake>");
}

TEST_F(CXMLDocumentTest, AParentKeyMustNameOneNode) {
    mDocument.AddNode(root(), newElement("twice"));
    mDocument.AddNode(root(), newElement("twice"));
    CXMLElementNode child("child", kCFStringEncodingUTF8);
    mDocument.AddNode("twice", &child);
    mDocument.AddNode("missing", &child);
    EXPECT_EQ(mDocument.GetNodeByKey("child"), nullptr);
    EXPECT_THAT(keysOfChildren(mDocument.GetNodeByKey("twice")), IsEmpty());
}

TEST_F(CXMLDocumentTest, ANodeWithoutAKeyStaysWithTheCaller) {
    CXMLTextNode empty("", kCFStringEncodingUTF8), invalid("\xFF", kCFStringEncodingUTF8);
    mDocument.AddNode(root(), &empty);
    mDocument.AddNode(root(), &invalid);
    EXPECT_THAT(keysOfChildren(root()), ElementsAre("xml"));
    EXPECT_EQ(mDocument.GetNodeByKey(""), nullptr);
}

TEST_F(CXMLDocumentTest, AParentThatIsNoTreeNodeEndsTheProcess) {
    const TemporaryFolder folder;
    CXMLTextNode leaf("leaf", kCFStringEncodingUTF8), child("child", kCFStringEncodingUTF8);
    EXPECT_EXIT(mDocument.AddNode(&leaf, &child), ExitedWithCode(0), "");
    EXPECT_EXIT(mDocument.AddNode(static_cast<CXMLNode*>(nullptr), &child), ExitedWithCode(0), "");
    EXPECT_THAT(contents("error.log"),
                HasSubstr(" Function  :  void CXMLDocument::AddNode(CXMLNode*, CXMLNode*)\n"
                          " Error Code:  <NULL>\n"
                          " Message   :  Parent node not a CXMLTreeNode\n"));
}

TEST_F(CXMLDocumentTest, ReadingKeepsElementsAndTexts) {
    read("<?xml version=\"1.0\"?><!--c--><a b=\"1\"> <c>one</c>two<![CDATA[three]]>&amp;<?pi?><d/></a>");
    EXPECT_THAT(keysOfChildren(root()), ElementsAre("xml", "a"));
    EXPECT_THAT(keysOfChildren(mDocument.GetNodeByKey("a")), ElementsAre("c", "two", "d"));
    EXPECT_THAT(standins::urlLoading().asked, ElementsAre(kURL));
}

TEST_F(CXMLDocumentTest, WhatWasReadIsWrittenAndNotWhatWasAddedSince) {
    const std::string document = "<?xml version=\"1.0\"?><a b=\"1\">one<!--c-->&amp;<d/></a>";
    read(document);
    mDocument.AddNode("a", newElement("added"));
    EXPECT_EQ(written(), document);
    read("no document");
    EXPECT_EQ(written(), "(none)");
}

TEST_F(CXMLDocumentTest, SearchesFindNodesInTheOrderInWhichTheyWereAdded) {
    read("<r><value>time</value><time><value>1</value></time><last>r</last></r>");
    EXPECT_NE(dynamic_cast<CXMLTextNode*>(mDocument.GetNodeByKey("time")), nullptr);
    CXMLNode* first = mDocument.GetNodeByKey("value");
    mDocument.AddNode("last", newElement("value"));
    const std::vector<CXMLNode*> values = nodesWithKey("value");
    ASSERT_EQ(values.size(), 3u);
    EXPECT_EQ(values[0], first);
    EXPECT_THAT(keysOfChildren(values[1]), ElementsAre("1"));
    EXPECT_THAT(keysOfChildren(values[2]), IsEmpty());
    EXPECT_EQ(mDocument.GetNodeByKey("value"), first);
    EXPECT_EQ(nodesWithKey("r").size(), 2u);

    std::vector<CXMLNode*> out{first};
    mDocument.GetNodesWithKey("last", out);
    EXPECT_THAT(out, ElementsAre(first, mDocument.GetNodeByKey("last")));
    EXPECT_THAT(nodesWithKey("missing"), IsEmpty());
}

TEST_F(CXMLDocumentTest, ALongKeyIsIndexedUnderTheWholeCharactersThatFit) {
    const std::string fitting(254, 'k');
    read("<r>" + fitting + "\xC3\xA9tail</r>");
    CXMLNode* text = mDocument.GetNodeByKey(fitting.c_str());
    ASSERT_NE(text, nullptr);
    EXPECT_EQ(text->GetTree()->GetNode()->GetString(), fitting + "\xC3\xA9tail");
    EXPECT_THAT(keysOfChildren(mDocument.GetNodeByKey("r")), ElementsAre(fitting));
}

TEST_F(CXMLDocumentTest, WhatCannotBeHadOrParsedAddsNothing) {
    mDocument.Read(static_cast<const CFURL*>(nullptr));
    mDocument.Read(static_cast<const FSRef*>(nullptr));
    mDocument.Read("/no/such/file");
    mDocument.Read("");
    const CFURL unreachable{"http://nowhere.example/"};
    mDocument.Read(&unreachable);
    for (const char* bytes : {"", "<html><br></html>", "<quakeml>", "<quakeml>\xFF</quakeml>"}) read(bytes);
    EXPECT_THAT(keysOfChildren(root()), ElementsAre("xml"));
    EXPECT_EQ(mDocument.GetNodeByKey("quakeml"), nullptr);
}

TEST_F(CXMLDocumentTest, EachReadAddsToTheDocument) {
    read("<a/>");
    read("<b/>");
    EXPECT_THAT(keysOfChildren(root()), ElementsAre("xml", "a", "b"));
    EXPECT_EQ(written(), "<b/>");
}

TEST_F(CXMLDocumentTest, FilesAreReadByPathAndReferenceAndWrittenWithTheirCodes) {
    const TemporaryFolder folder;
    const FSRef file{folder.path("some file.xml")};
    ASSERT_TRUE(mDocument.Write(file.path.c_str()));
    EXPECT_FALSE(mDocument.Write(folder.path("no/folder.xml").c_str()));
    EXPECT_FALSE(mDocument.Write(static_cast<const CFURL*>(nullptr)));
    const platform::FinderInfo codes = platform::finderInfo(file.path);
    if (platform::setFinderInfo(file.path, codes)) {
        EXPECT_EQ(std::string(codes.data(), 8), "TEXT????");
    }
    std::ofstream(file.path) << "<a/>";
    mDocument.Read(file.path.c_str());
    mDocument.Read(&file);
    EXPECT_EQ(nodesWithKey("a").size(), 2u);
}

}  // namespace
