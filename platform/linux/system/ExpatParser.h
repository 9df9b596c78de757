#pragma once

#include <expat.h>

#include <memory>

namespace platform {

struct ExpatParserDeleter {
    void operator()(XML_Parser parser) const { XML_ParserFree(parser); }
};
using ExpatParser = std::unique_ptr<XML_ParserStruct, ExpatParserDeleter>;

// Expat replaces entities in attributes' values, before 2.7 by a call within a call for each entity within
// another. A document that declares more of them is none.
inline constexpr int kMaxEntities = 1000;

}  // namespace platform
