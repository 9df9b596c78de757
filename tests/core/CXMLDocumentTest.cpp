#include "xml/CXMLDocument.h"

#include "platform/Files.h"
#include "support/FSRef.h"
#include "tests/TemporaryFolder.h"
#include "tests/standins/StandIns.h"
#include "xml/CXMLElementNode.h"
#include "xml/CXMLTextNode.h"

using namespace platform;

namespace {

using testing::ElementsAre, testing::ExitedWithCode, testing::IsEmpty;

CXMLElementNode* newElement(const char* name) { return new CXMLElementNode(name, kCFStringEncodingUTF8); }

class CXMLDocumentTest : public standins::Test {
  protected:
    ~CXMLDocumentTest() override { mDocument.DeleteTree(); }

    void read(const std::string& bytes) {
        standins::desktop.answerToAll = bytes;
        const CFURL url{"http://feed.example/document"};
        mDocument.Read(&url);
    }

    CXMLNode* root() { return find("XML_DOCUMENT"); }
    CXMLNode* find(const std::string& key) { return mDocument.GetNodeByKey(key.c_str()); }

    static std::vector<std::string> keysIn(CXMLNode* node) {
        std::vector<CXMLNode*> children;
        dynamic_cast<CXMLTreeNode*>(node)->GetChildren(children);
        std::vector<std::string> keys;
        for (const CXMLNode* child : children) {
            char buffer[CXMLNode::kTextBufferSize] = "";
            keys.push_back(child->GetKey(buffer, sizeof buffer));
        }
        return keys;
    }

    std::string written() { return mDocument.Write("file") ? contentsOf("file") : "(none)"; }

    const TemporaryFolder mCurrentFolder;
    CXMLDocument mDocument;
};

TEST_F(CXMLDocumentTest, AddedNodesAreOwnedFoundAndWritten) {
    EXPECT_EQ(written(), "<?xml version=\"1.0\"?>");
    CXMLElementNode* quake = newElement("quake");
    mDocument.AddNode(root(), quake);
    mDocument.AddNode("quake", new CXMLTextNode("a<b & c", kCFStringEncodingUTF8));
    mDocument.AddNode("quake", newElement("empty"));
    EXPECT_EQ(find("quake"), quake);
    EXPECT_THAT(keysIn(quake), ElementsAre("a&lt;b &amp; c", "empty"));
    EXPECT_EQ(written(), "<?xml version=\"1.0\"?><quake>a&lt;b &amp; c<empty></empty></quake>");
}

TEST_F(CXMLDocumentTest, ANodeStaysWithTheCallerWithoutAKeyOrAParentThatItsKeyAloneNames) {
    mDocument.AddNode(root(), newElement("twice"));
    mDocument.AddNode(root(), newElement("twice"));
    CXMLElementNode child("child", kCFStringEncodingUTF8);
    for (const char* parent : {"twice", "missing"}) mDocument.AddNode(parent, &child);
    CXMLTextNode empty("", kCFStringEncodingUTF8), invalid("\xFF", kCFStringEncodingUTF8);
    for (CXMLNode* none : {&empty, &invalid}) mDocument.AddNode(root(), none);
    EXPECT_THAT(keysIn(root()), ElementsAre("xml", "twice", "twice"));
    EXPECT_THAT(keysIn(find("twice")), IsEmpty());
    for (const char* key : {"child", ""}) EXPECT_EQ(find(key), nullptr);
}

TEST_F(CXMLDocumentTest, AParentThatIsNoTreeNodeEndsTheProcess) {
    CXMLTextNode leaf("leaf", kCFStringEncodingUTF8), child("child", kCFStringEncodingUTF8);
    for (CXMLNode* parent : {static_cast<CXMLNode*>(&leaf), static_cast<CXMLNode*>(nullptr)})
        EXPECT_EXIT(mDocument.AddNode(parent, &child), ExitedWithCode(0), "");
    EXPECT_THAT(contentsOf("error.log"),
                testing::HasSubstr(" Function  :  void CXMLDocument::AddNode(CXMLNode*, CXMLNode*)\n"
                                   " Error Code:  <NULL>\n"
                                   " Message   :  Parent node not a CXMLTreeNode\n"));
}

TEST_F(CXMLDocumentTest, EachReadAddsElementsAndTextsAndTheLastOneIsWrittenBack) {
    read("<?xml version=\"1.0\"?><!--c--><a b=\"1\"> <c>one</c>two's<![CDATA[three]]>&amp;<?pi?><d/></a>");
    EXPECT_THAT(keysIn(find("a")), ElementsAre("c", "two&apos;s", "d"));
    const std::string document = "<?xml version=\"1.0\"?><e b=\"1\">one<!--c-->&amp;<d/></e>";
    read(document);
    mDocument.AddNode("e", newElement("added"));
    EXPECT_THAT(keysIn(root()), ElementsAre("xml", "a", "e"));
    EXPECT_EQ(written(), document);
    read("no document");
    EXPECT_EQ(written(), "(none)");
}

TEST_F(CXMLDocumentTest, SearchesFindNodesInTheOrderInWhichTheyWereAdded) {
    read("<r><value>time</value><time><value>1</value></time><last>r</last></r>");
    EXPECT_NE(dynamic_cast<CXMLTextNode*>(find("time")), nullptr);
    CXMLNode* first = find("value");
    mDocument.AddNode("last", newElement("value"));
    std::vector<CXMLNode*> values{root()};
    for (const char* key : {"value", "last", "missing"}) mDocument.GetNodesWithKey(key, values);
    ASSERT_EQ(values.size(), 5u);
    EXPECT_THAT(values, ElementsAre(root(), first, values[2], values[3], find("last")));
    EXPECT_THAT(keysIn(values[2]), ElementsAre("1"));
    EXPECT_THAT(keysIn(values[3]), IsEmpty());
    EXPECT_EQ(find("value"), first);
}

TEST_F(CXMLDocumentTest, ALongKeyIsIndexedUnderTheWholeCharactersThatFit) {
    const std::string fitting(254, 'k');
    read("<r>" + fitting + "\xC3\xA9tail</r>");
    ASSERT_NE(find(fitting), nullptr);
    EXPECT_EQ(find(fitting)->GetTree()->GetNode()->GetString(), fitting + "\xC3\xA9tail");
}

TEST_F(CXMLDocumentTest, WhatCannotBeHadOrParsedAddsNothing) {
    mDocument.Read(static_cast<const CFURL*>(nullptr));
    mDocument.Read(static_cast<const FSRef*>(nullptr));
    for (const char* path : {"/no/such/file", ""}) mDocument.Read(path);
    const CFURL unreachable{"http://nowhere.example/"};
    mDocument.Read(&unreachable);
    for (const char* bytes : {"", "<html><br></html>", "<quakeml>", "<quakeml>\xFF</quakeml>"}) read(bytes);
    EXPECT_THAT(keysIn(root()), ElementsAre("xml"));
    EXPECT_EQ(find("quakeml"), nullptr);
}

TEST_F(CXMLDocumentTest, AResourceThatCannotBeLoadedLeavesTheDocumentToBeWritten) {
    mDocument.Read("/no/such/file");
    EXPECT_EQ(written(), "<?xml version=\"1.0\"?>");
    read("<a/>");
    mDocument.Read("/no/such/file");
    EXPECT_EQ(written(), "<a/>");
}

TEST_F(CXMLDocumentTest, FilesAreReadByPathAndReferenceAndWrittenWithTheirCodes) {
    const FSRef file{"some file.xml"};
    ASSERT_TRUE(mDocument.Write(file.path.c_str()));
    EXPECT_FALSE(mDocument.Write("no/folder.xml"));
    EXPECT_FALSE(mDocument.Write(static_cast<const CFURL*>(nullptr)));
    const FinderInfo codes = finderInfo(file.path);
    const bool areKept = setFinderInfo(file.path, codes);  // by this file system
    EXPECT_EQ(std::string(codes.data(), 8), areKept ? "TEXT????" : std::string(8, '\0'));
    std::ofstream(file.path) << "<a/>";
    mDocument.Read(file.path.c_str());
    mDocument.Read(&file);
    EXPECT_THAT(keysIn(root()), ElementsAre("xml", "a", "a"));
}

}  // namespace
