#include "xml/CXMLDocument.h"

#include <gmock/gmock.h>

#include "platform/Files.h"
#include "support/FSRef.h"
#include "tests/TemporaryFolder.h"
#include "tests/standins/StandIns.h"
#include "tests/standins/URLLoading.h"
#include "xml/CXMLElementNode.h"
#include "xml/CXMLTextNode.h"

namespace {

using testing::ElementsAre;
using testing::ExitedWithCode;
using testing::HasSubstr;
using testing::IsEmpty;

std::string contents(const std::string& path) {
    std::string text;
    platform::readFile(path, text);
    return text;
}

CXMLElementNode* newElement(const char* name) { return new CXMLElementNode(name, kCFStringEncodingUTF8); }

class CXMLDocumentTest : public standins::Test {
  protected:
    ~CXMLDocumentTest() override { mDocument.DeleteTree(); }

    void read(const std::string& bytes) {
        standins::urlLoading().answerToAll = bytes;
        const CFURL url{"http://feed.example/document"};
        mDocument.Read(&url);
    }

    CXMLNode* root() { return mDocument.GetNodeByKey("XML_DOCUMENT"); }

    std::vector<std::string> keysOfChildren(CXMLNode* node) {
        std::vector<CXMLNode*> children;
        dynamic_cast<CXMLTreeNode*>(node)->GetChildren(children);
        std::vector<std::string> keys;
        for (const CXMLNode* child : children) {
            char buffer[CXMLNode::kTextBufferSize] = "";
            keys.push_back(child->GetKey(buffer, sizeof buffer));
        }
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

TEST_F(CXMLDocumentTest, AddedNodesAreOwnedFoundAndWritten) {
    EXPECT_EQ(written(), "<?xml version=\"1.0\"?>");
    CXMLElementNode* quake = newElement("quake");
    mDocument.AddNode(root(), quake);
    mDocument.AddNode("quake", new CXMLTextNode("a<b & c", kCFStringEncodingUTF8));
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

TEST_F(CXMLDocumentTest, EachReadAddsElementsAndTextsAndTheLastOneIsWrittenBack) {
    read("<?xml version=\"1.0\"?><!--c--><a b=\"1\"> <c>one</c>two<![CDATA[three]]>&amp;<?pi?><d/></a>");
    EXPECT_THAT(keysOfChildren(mDocument.GetNodeByKey("a")), ElementsAre("c", "two", "d"));
    const std::string document = "<?xml version=\"1.0\"?><e b=\"1\">one<!--c-->&amp;<d/></e>";
    read(document);
    mDocument.AddNode("e", newElement("added"));
    EXPECT_THAT(keysOfChildren(root()), ElementsAre("xml", "a", "e"));
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

    std::vector<CXMLNode*> out{first};
    mDocument.GetNodesWithKey("last", out);
    mDocument.GetNodesWithKey("missing", out);
    EXPECT_THAT(out, ElementsAre(first, mDocument.GetNodeByKey("last")));
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
    ASSERT_TRUE(platform::writeFileAtomically(file.path, "<a/>"));
    mDocument.Read(file.path.c_str());
    mDocument.Read(&file);
    EXPECT_EQ(nodesWithKey("a").size(), 2u);
}

}  // namespace
