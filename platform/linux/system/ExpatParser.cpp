// expat.h declares the limits below only with this macro, which says how the library was built.
#define XML_DTD

#include "platform/linux/system/ExpatParser.h"

#include <malloc.h>

#include <cstdlib>

namespace platform {

namespace {

// A document larger than this with its entities replaced may be at most so many times its own size.
constexpr unsigned long long kGrowthCountsFromBytes = 1 << 20;
constexpr float kMostGrowth = 2;

// Room for markup of 1 MiB, held twice while its buffer grows, and for all names of a document.
constexpr std::size_t kMostHeldBytes = 8 << 20;

std::size_t heldBytes = 0;  // by all namespace parsers

void* reallocateWithinLimit(void* block, std::size_t size) {
    const std::size_t before = malloc_usable_size(block);
    if (size > kMostHeldBytes || heldBytes - before > kMostHeldBytes - size) return nullptr;
    void* const moved = std::realloc(block, size);
    if (moved) heldBytes += malloc_usable_size(moved) - before;
    return moved;
}

void* allocateWithinLimit(std::size_t size) { return reallocateWithinLimit(nullptr, size); }

void release(void* block) {
    heldBytes -= malloc_usable_size(block);
    std::free(block);
}

ExpatParser withLimits(XML_Parser parser) {
    if (!parser) return {};
    XML_SetBillionLaughsAttackProtectionActivationThreshold(parser, kGrowthCountsFromBytes);
    XML_SetBillionLaughsAttackProtectionMaximumAmplification(parser, kMostGrowth);
    return ExpatParser(parser);
}

}  // namespace

ExpatParser makeExpatParser() { return withLimits(XML_ParserCreate("UTF-8")); }

ExpatParser makeNamespaceParser(char separator) {
    static constexpr XML_Memory_Handling_Suite kMemory{allocateWithinLimit, reallocateWithinLimit, release};
    return withLimits(XML_ParserCreate_MM(nullptr, &kMemory, &separator));
}

}  // namespace platform
