#pragma once

#include <vector>

#include "xml/CXMLNode.h"

// A node that owns its children, in the order in which they were added.
class CXMLTreeNode : public CXMLNode {
  public:
    ~CXMLTreeNode() override;

    // Takes ownership. The parser trees are the document's business.
    void AddChild(CXMLNode* child) { mChildren.push_back(child); }

    // The first child with that key, or null.
    CXMLNode* GetChildForKey(const char* key) const;

    // Null when there is none.
    CXMLNode* GetFirstChild() const { return mChildren.empty() ? nullptr : mChildren.front(); }

    // Replaces what out holds. Returns the number of children, which stay this node's.
    int GetChildren(std::vector<CXMLNode*>& out) const;

  private:
    std::vector<CXMLNode*> mChildren;
    std::vector<CXMLNode*>* mOrphans = nullptr;  // takes the children when the node above is being deleted
};
