#include "platform/portable/CFXMLTree.h"

#include <new>
#include <utility>

namespace platform {

void CFXMLTree::AppendChild(CFXMLTree* child) {
    child->AddShare();
    (mLastChild ? mLastChild->mNextSibling : mFirstChild) = child;
    mLastChild = child;
    ++mChildCount;
}

// Loops over the trees that nobody shares any more, chained through mNextSibling. Recursion could overflow
// the stack on a deep tree.
void CFXMLTree::Destroy() {
    CFXMLTree* orphans = ReleaseChildren(nullptr);
    delete this;
    while (orphans) {
        CFXMLTree* tree = orphans;
        orphans = tree->ReleaseChildren(tree->mNextSibling);
        delete tree;
    }
}

// Drops the share in every child. Returns the children that nobody else shares, in order, before orphans.
CFXMLTree* CFXMLTree::ReleaseChildren(CFXMLTree* orphans) {
    CFXMLTree* first = nullptr;
    CFXMLTree** end = &first;
    for (CFXMLTree* child = mFirstChild; child;) {
        CFXMLTree* next = std::exchange(child->mNextSibling, nullptr);
        if (--child->mShares == 0) {
            *end = child;
            end = &child->mNextSibling;
        }
        child = next;
    }
    *end = orphans;
    return first;
}

CFXMLTreeRef CFXMLTreeCreateWithNode(CFXMLNodeRef node) {
    return CFXMLTreeRef(new (std::nothrow) CFXMLTree(std::move(node)));
}

}  // namespace platform
