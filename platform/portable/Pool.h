#pragma once

#include <cstddef>
#include <cstdlib>
#include <new>

namespace platform {

// Storage for the many small objects of a class T, which derives from Pooled<T> and has no derived classes.
// Blocks are cut out of slabs, all of which are freed when the last object is gone. This frees a big document
// much faster than the heap would. Not thread-safe.
template <typename T>
class Pooled {
  public:
    // Null when out of memory.
    static void* operator new(std::size_t, const std::nothrow_t&) noexcept {
        if (!sFreeBlocks) AddSlab();
        if (!sFreeBlocks) return nullptr;
        ++sUsedBlocks;
        return Take(sFreeBlocks);
    }
    static void operator delete(void* object) noexcept {
        Put(object, sFreeBlocks);
        if (--sUsedBlocks == 0) FreeSlabs();
    }
    static void operator delete(void* object, const std::nothrow_t&) noexcept { operator delete(object); }

  private:
    // Each slab, and each free block, begins with the address of the next.
    struct Link {
        Link* next;
    };

    static constexpr std::size_t kSlabSize = 64 * 1024;

    static Link* Take(Link*& list) {
        Link* link = list;
        list = link->next;
        return link;
    }
    static void Put(void* storage, Link*& list) { list = new (storage) Link{list}; }

    static void AddSlab() {
        void* slab = std::malloc(kSlabSize);
        if (!slab) return;
        Put(slab, sSlabs);
        for (std::size_t end = kSlabSize; end >= sizeof(T) + alignof(std::max_align_t); end -= sizeof(T)) {
            Put(static_cast<std::byte*>(slab) + end - sizeof(T), sFreeBlocks);
        }
    }
    static void FreeSlabs() {
        sFreeBlocks = nullptr;
        while (sSlabs) std::free(Take(sSlabs));
    }

    static inline Link* sFreeBlocks = nullptr;
    static inline Link* sSlabs = nullptr;
    static inline std::size_t sUsedBlocks = 0;
};

}  // namespace platform
