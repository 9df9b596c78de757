#pragma once

#include <expat.h>

#include <memory>

namespace platform {

struct ExpatParserDeleter {
    void operator()(XML_Parser parser) const { XML_ParserFree(parser); }
};
using ExpatParser = std::unique_ptr<XML_ParserStruct, ExpatParserDeleter>;

// A UTF-8 parser that reports names as written. Both functions return null when there is no memory.
ExpatParser makeExpatParser();
// A parser for any encoding that reports a name after its namespace and separator. It fails rather than hold
// more than a few megabytes.
ExpatParser makeNamespaceParser(char separator);

// The most attributes and entities that a document may declare. Expat expands entities in attribute values,
// before 2.7 recursively, and visits all declared attributes of an element's name with each such element.
inline constexpr int kMaxDeclarations = 1000;

}  // namespace platform
