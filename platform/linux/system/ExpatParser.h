#pragma once

#include <expat.h>

#include <memory>

namespace platform {

struct ExpatParserDeleter {
    void operator()(XML_Parser parser) const { XML_ParserFree(parser); }
};
using ExpatParser = std::unique_ptr<XML_ParserStruct, ExpatParserDeleter>;

// A parser of UTF-8 that takes names as they are written. Both makers return null when there is no memory.
ExpatParser makeExpatParser();
// A parser of any encoding that puts separator between a name and its namespace. It fails rather than hold
// more than a few megabytes.
ExpatParser makeNamespaceParser(char separator);

// Expat replaces entities in attributes' values, before 2.7 by a call within a call for each entity within
// another, and visits all declared attributes with each element. A document that declares more of either is
// refused.
inline constexpr int kMaxDeclarations = 1000;

}  // namespace platform
