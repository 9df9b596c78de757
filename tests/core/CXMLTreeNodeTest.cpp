#include "xml/CXMLTreeNode.h"

#include <gmock/gmock.h>

#include "xml/CXMLElementNode.h"
#include "xml/CXMLTextNode.h"

using namespace platform;

namespace {

using testing::ElementsAre;

// An element that records its end, and how many children it still has then.
class ToldElement : public CXMLElementNode {
  public:
    ToldElement(const char* name, std::vector<std::string>& ended)
        : CXMLElementNode(name, kCFStringEncodingUTF8), mEnded(ended), mName(name) {}
    ~ToldElement() override {
        std::vector<CXMLNode*> children;
        mEnded.push_back(mName + ":" + std::to_string(GetChildren(children)));
    }

  private:
    std::vector<std::string>& mEnded;
    std::string mName;
};

CXMLElementNode* newElement(const char* name) { return new CXMLElementNode(name, kCFStringEncodingUTF8); }

TEST(CXMLTreeNodeTest, ChildrenAreFoundByKeyInTheirOrder) {
    CXMLTreeNode parent;
    CXMLNode *const first = newElement("a"), *const second = newElement("a");
    CXMLNode* const text = new CXMLTextNode("b", kCFStringEncodingUTF8);
    for (CXMLNode* child : {first, static_cast<CXMLNode*>(nullptr), second, text}) parent.AddChild(child);
    EXPECT_EQ(parent.GetChildForKey("a"), first);
    EXPECT_EQ(parent.GetChildForKey("b"), text);
    EXPECT_EQ(parent.GetChildForKey("c"), nullptr);

    std::vector<CXMLNode*> children{text, text};
    EXPECT_EQ(parent.GetChildren(children), 4);
    EXPECT_THAT(children, ElementsAre(first, nullptr, second, text));
}

TEST(CXMLTreeNodeTest, TheEndOfANodeIsTheEndOfAllBelowItFirstChildFirstHoweverDeep) {
    std::vector<std::string> ended;
    auto* const root = new ToldElement("root", ended);
    auto* const a = new ToldElement("a", ended);
    a->AddChild(new ToldElement("a1", ended));
    a->AddChild(new ToldElement("a2", ended));
    for (CXMLNode* child : {static_cast<CXMLNode*>(a), static_cast<CXMLNode*>(nullptr)})
        root->AddChild(child);
    CXMLTreeNode* last = new ToldElement("b", ended);
    root->AddChild(last);
    for (int depth = 0; depth < 100'000; ++depth) {
        auto* child = newElement("deep");
        last->AddChild(child);
        last->GetTree()->AppendChild(child->GetTree());
        last = child;
    }
    delete root;
    EXPECT_THAT(ended, ElementsAre("root:3", "a:2", "a1:0", "a2:0", "b:1"));
}

}  // namespace
