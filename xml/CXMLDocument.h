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
// owns the nodes; only DeleteTree ends them, not the document's own end.
class CXMLDocument {
  public:
    // A document of nothing but its declaration.
    CXMLDocument();
    virtual ~CXMLDocument() = default;
    CXMLDocument(const CXMLDocument&) = delete;
    CXMLDocument& operator=(const CXMLDocument&) = delete;

    // Makes node the last child of parent, which owns it then, and indexes it. A parent that is no tree node
    // ends the process. A node without a key stays with the caller. A key that does not fit
    // CXMLNode::kTextBufferSize is indexed under the whole characters that do.
    void AddNode(CXMLNode* parent, CXMLNode* node);
    // The same under the one node of that key. Where there is none, or several, node stays with the caller.
    void AddNode(const char* parentKey, CXMLNode* node);

    // The node of that key that was added first, or null.
    CXMLNode* GetNodeByKey(const char* key);
    // Appends the nodes of that key to out, in the order in which they were added.
    void GetNodesWithKey(const char* key, std::vector<CXMLNode*>& out);

    // Each adds what it reads under the document node. A resource that cannot be loaded changes nothing; one
    // that cannot be parsed adds nothing and leaves nothing to write.
    void Read(const platform::CFURL* url);
    void Read(const FSRef* file);
    void Read(const char* path);

    // Adds the elements and texts under tree to parent. Whatever else is in it is left out, with all below
    // it.
    void ProcessSubTree(const platform::CFXMLTree* tree, CXMLNode* parent);

    // Writes the tree as it was read, or the nodes that were added if none was. Returns false on failure.
    bool Write(const platform::CFURL* url) const;
    bool Write(const char* path) const;

    // Ends every node. The document must not be searched afterwards.
    void DeleteTree();

  private:
    using KeyIndex = std::multimap<std::string, CXMLNode*, std::less<>>;

    // Enters the first of the pending nodes, which there must be, into the index.
    KeyIndex::iterator EnterNextNode();

    platform::CFXMLTreeRef mDocumentTree;  // what Write writes
    KeyIndex mKeyIndex;
    // Added, not yet in the index: few are ever looked up, so they enter it when a search gets that far.
    std::deque<CXMLNode*> mPendingNodes;
};
