#pragma once

#include <vector>

#include "xml/CXMLNode.h"

// A node that owns its children and keeps them in the order they were added.
class CXMLTreeNode : public CXMLNode {
  public:
    ~CXMLTreeNode() override;

    // Takes ownership. The parser trees are the document's business.
    void AddChild(CXMLNode* child) { mChildren.push_back(child); }

    // The first child with that key, or null.
    CXMLNode* GetChildForKey(const char* key) const;

    // Null if there are no children.
    CXMLNode* GetFirstChild() const { return mChildren.empty() ? nullptr : mChildren.front(); }

    // Replaces the contents of out. Returns the number of children; this node still owns them.
    int GetChildren(std::vector<CXMLNode*>& out) const;

  private:
    std::vector<CXMLNode*> mChildren;
    std::vector<CXMLNode*>* mOrphans = nullptr;  // takes the children while the node above is deleted
};
