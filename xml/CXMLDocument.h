#pragma once

#include <deque>
#include <functional>
#include <map>
#include <string>
#include <vector>

#include "platform/portable/CFURL.h"
#include "platform/portable/CFXMLTree.h"

class CXMLNode;
struct FSRef;

// An XML document: a tree of nodes under one document node, and an index of them by key. The document node
// owns the nodes. Only DeleteTree deletes them; the document's destructor does not.
class CXMLDocument {
  public:
    // A document that holds only its declaration.
    CXMLDocument();
    virtual ~CXMLDocument() = default;
    CXMLDocument(const CXMLDocument&) = delete;
    CXMLDocument& operator=(const CXMLDocument&) = delete;

    // Makes node the last child of parent, which then owns it, and indexes it. A parent that is not a tree
    // node ends the process. A node without a key stays with the caller. A key that does not fit
    // CXMLNode::kTextBufferSize is indexed under the whole characters that fit.
    void AddNode(CXMLNode* parent, CXMLNode* node);
    // The same under the only node with that key. If there is no such node, or several, node stays with the
    // caller.
    void AddNode(const char* parentKey, CXMLNode* node);

    // The first node added with that key, or null.
    CXMLNode* GetNodeByKey(const char* key);
    // Appends the nodes with that key to out, in the order they were added.
    void GetNodesWithKey(const char* key, std::vector<CXMLNode*>& out);

    // Each adds what it reads under the document node. A resource that cannot be loaded changes nothing; one
    // that cannot be parsed adds nothing and leaves nothing to write.
    void Read(const platform::CFURL* url);
    void Read(const FSRef* file);
    void Read(const char* path);

    // Adds the elements and texts under tree to parent. Skips any other node and everything below it.
    void ProcessSubTree(const platform::CFXMLTree* tree, CXMLNode* parent);

    // Writes the tree last read, or the added nodes if none was read. Returns false on failure.
    bool Write(const platform::CFURL* url) const;
    bool Write(const char* path) const;

    // Deletes every node. The document must not be searched afterwards.
    void DeleteTree();

  private:
    using KeyIndex = std::multimap<std::string, CXMLNode*, std::less<>>;

    // Moves the first pending node into the index. There must be one.
    KeyIndex::iterator EnterNextNode();

    platform::CFXMLTreeRef mDocumentTree;  // what Write writes
    KeyIndex mKeyIndex;
    // Added but not yet indexed: few nodes are ever looked up, so a search indexes only as far as it gets.
    std::deque<CXMLNode*> mPendingNodes;
};
