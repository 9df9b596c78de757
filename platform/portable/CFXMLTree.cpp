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

// A loop over those that nobody shares any more, chained through mNextSibling: however deep a tree is, the
// stack is not.
void CFXMLTree::Destroy() {
    CFXMLTree* orphans = ReleaseChildren(nullptr);
    delete this;
    while (orphans) {
        CFXMLTree* tree = orphans;
        orphans = tree->ReleaseChildren(tree->mNextSibling);
        delete tree;
    }
}

// Gives up the share in every child. Returns the children without any other, in order, in front of orphans.
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
