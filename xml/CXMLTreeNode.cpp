#include "xml/CXMLTreeNode.h"

#include <utility>

// Deletes each node before its children, first child first. Only the topmost node deletes, in a loop, and all
// others hand it their children, so a deep tree does not exhaust the stack.
CXMLTreeNode::~CXMLTreeNode() {
    if (mOrphans) {
        mOrphans->insert(mOrphans->end(), mChildren.rbegin(), mChildren.rend());
        return;
    }
    std::vector<CXMLNode*> orphans(mChildren.rbegin(), mChildren.rend());
    while (!orphans.empty()) {
        CXMLNode* node = orphans.back();
        orphans.pop_back();
        if (auto* tree = dynamic_cast<CXMLTreeNode*>(node)) tree->mOrphans = &orphans;
        delete node;
    }
}

CXMLNode* CXMLTreeNode::GetChildForKey(const char* key) const {
    for (CXMLNode* child : mChildren) {
        if (child && child->VerifyKey(key)) return child;
    }
    return nullptr;
}

int CXMLTreeNode::GetChildren(std::vector<CXMLNode*>& out) const {
    out = mChildren;
    return static_cast<int>(out.size());
}
