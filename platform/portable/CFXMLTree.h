#pragma once

#include <cstddef>
#include <cstdint>

#include "platform/portable/CFXMLNode.h"
#include "platform/portable/Pool.h"
#include "platform/portable/Shared.h"

namespace platform {

class CFXMLTree;
using CFXMLTreeRef = Shared<CFXMLTree>;

// A node and, in order, the trees under it. A tree holds a share in each of its children, so a child lives on
// after its creator has dropped its own.
class CFXMLTree : public Pooled<CFXMLTree> {
  public:
    explicit CFXMLTree(CFXMLNodeRef node) : mNode(std::move(node)) {}
    CFXMLTree(const CFXMLTree&) = delete;
    CFXMLTree& operator=(const CFXMLTree&) = delete;

    const CFXMLNode* GetNode() const { return mNode.get(); }
    std::size_t GetChildCount() const { return mChildCount; }
    const CFXMLTree* GetFirstChild() const { return mFirstChild; }
    const CFXMLTree* GetNextSibling() const { return mNextSibling; }

    // child must not be part of another tree.
    void AppendChild(CFXMLTree* child);

    void AddShare() { ++mShares; }
    void DropShare() {
        if (--mShares == 0) Destroy();
    }

  private:
    ~CFXMLTree() = default;

    void Destroy();
    CFXMLTree* ReleaseChildren(CFXMLTree* orphans);

    std::uint32_t mShares = 0;
    std::uint32_t mChildCount = 0;
    CFXMLNodeRef mNode;
    CFXMLTree* mFirstChild = nullptr;
    CFXMLTree* mLastChild = nullptr;
    CFXMLTree* mNextSibling = nullptr;
};

// A tree of this one node. Null when out of memory.
CFXMLTreeRef CFXMLTreeCreateWithNode(CFXMLNodeRef node);

}  // namespace platform
