#include "xml/CXMLDocument.h"

#include "platform/Files.h"
#include "support/FSRef.h"
#include "support/OrvFiles.h"
#include "tests/TemporaryFolder.h"
#include "tests/standins/StandIns.h"
#include "xml/CXMLElementNode.h"
#include "xml/CXMLTextNode.h"
#include "xml/UXML.h"

using namespace platform;

namespace {

using testing::ElementsAre;

class CXMLDocumentTest : public standins::Test {
  protected:
    ~CXMLDocumentTest() override { mDocument.DeleteTree(); }

    void read(const std::string& bytes) {
        serveDocument(bytes);
        const CFURL url{"http://feed.example/document"};
        mDocument.Read(&url);
    }

    CXMLNode* find(const std::string& key) { return mDocument.GetNodeByKey(key.c_str()); }
    CXMLTreeNode* element(const char* key) { return dynamic_cast<CXMLTreeNode*>(find(key)); }
    CXMLTreeNode* root() { return element("XML_DOCUMENT"); }
    CXMLElementNode* addElement(CXMLTreeNode* parent, const char* name) {
        return UXML::CreateCXMLElementNodeForParentNode(mDocument, parent, name);
    }

    static std::vector<std::string> keysIn(const CXMLTreeNode* node) {
        std::vector<CXMLNode*> children;
        node->GetChildren(children);
        std::vector<std::string> keys;
        char buffer[CXMLNode::kTextBufferSize];
        for (const CXMLNode* child : children) keys.push_back(child->GetKey(buffer, sizeof buffer));
        return keys;
    }

    std::string written() { return mDocument.Write("file") ? contentsOf("file") : "(none)"; }

    const TemporaryFolder mCurrentFolder;
    CXMLDocument mDocument;
};

TEST_F(CXMLDocumentTest, AddedNodesAreFoundAndWritten) {
    CXMLElementNode* const quake = addElement(root(), "\x8E");
    mDocument.AddNode("\xC3\xA9", new CXMLTextNode("a<b & c", kCFStringEncodingUTF8));
    addElement(quake, "empty");
    EXPECT_THAT(keysIn(quake), ElementsAre("a&lt;b &amp; c", "empty"));
    EXPECT_EQ(written(), "<?xml version=\"1.0\"?><\xC3\xA9>a&lt;b &amp; c<empty></empty></\xC3\xA9>");
}

TEST_F(CXMLDocumentTest, EachReadAddsItsElementsAndTexts) {
    read("<?xml version=\"1.0\"?><!--c--><a b=\"1\"> <c>one</c>two's<![CDATA[three]]>&amp;<?pi?><d/></a>");
    EXPECT_THAT(keysIn(element("a")), ElementsAre("c", "two&apos;s", "d"));
    EXPECT_THAT(keysIn(element("c")), ElementsAre("one"));
    const std::string document = "<?xml version=\"1.0\"?><e b=\"1\">one<!--c-->&amp;<d/></e>";
    read(document);
    addElement(element("e"), "added");
    EXPECT_THAT(keysIn(root()), ElementsAre("xml", "a", "e"));
    EXPECT_EQ(written(), document);  // the last one, as it was read
}

TEST_F(CXMLDocumentTest, SearchesFindNodesInTheOrderInWhichTheyWereAdded) {
    read("<r><value>time</value><time><value>1</value></time></r>");
    CXMLNode* const first = find("value");
    CXMLNode* const last = addElement(element("r"), "value");
    std::vector<CXMLNode*> found;
    for (const char* key : {"value", "missing"}) mDocument.GetNodesWithKey(key, found);
    EXPECT_THAT(found, ElementsAre(first, testing::_, last));
    // A node stays with the caller without a key or a parent that is the only one of its name.
    CXMLTextNode child("child", kCFStringEncodingUTF8), empty("", kCFStringEncodingUTF8);
    for (const char* parent : {"value", "missing"}) mDocument.AddNode(parent, &child);
    mDocument.AddNode(root(), &empty);
    EXPECT_THAT(keysIn(root()), ElementsAre("xml", "r"));
    EXPECT_THAT(keysIn(dynamic_cast<CXMLTreeNode*>(first)), ElementsAre("time"));
}

TEST_F(CXMLDocumentTest, DataThatCannotBeParsedLeavesNothingToWriteButAFailedLoadChangesNothing) {
    for (const char* none : {"", "/no/such/file"}) mDocument.Read(none);
    EXPECT_EQ(written(), "<?xml version=\"1.0\"?>");
    read("<a/>");
    mDocument.Read("/no/such/file");
    EXPECT_EQ(written(), "<a/>");
    read("<quakeml>");
    EXPECT_EQ(written(), "(none)");
}

TEST_F(CXMLDocumentTest, AFileIsWrittenWithItsCodes) {
    const FSRef file{"some file.xml"};
    ASSERT_TRUE(mDocument.Write(file.path.c_str()));
    EXPECT_FALSE(mDocument.Write("no/folder.xml"));
    EXPECT_FALSE(OrvFiles::SetFileCreatorType(FSRef{"."}, 1, 1));  // a folder has none
    OrvFiles::SetFileCreatorType(file, 0, 0);                      // changes nothing
    const FinderInfo codes = finderInfo(file.path);
    const bool areKept = setFinderInfo(file.path, codes);  // by this file system
    EXPECT_EQ(std::string(codes.data(), 8), areKept ? "TEXT????" : std::string(8, '\0'));
    std::ofstream(file.path) << "<a/>";
    mDocument.Read(&file);
    EXPECT_THAT(keysIn(root()), ElementsAre("xml", "a"));
}

}  // namespace
