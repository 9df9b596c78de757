#include "xml/CXMLTreeNode.h"

#include <utility>

// Each node goes before its children, first child first. A loop instead of calls within calls: however deep
// the tree is, the stack is not.
CXMLTreeNode::~CXMLTreeNode() {
    std::vector<CXMLNode*> pending(mChildren.rbegin(), mChildren.rend());
    while (!pending.empty()) {
        CXMLNode* node = pending.back();
        pending.pop_back();
        if (auto* tree = dynamic_cast<CXMLTreeNode*>(node)) {
            pending.insert(pending.end(), tree->mChildren.rbegin(), tree->mChildren.rend());
            tree->mChildren.clear();
        }
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
