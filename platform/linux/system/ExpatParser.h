#pragma once

#include <expat.h>

#include <memory>

namespace platform {

struct ExpatParserDeleter {
    void operator()(XML_Parser parser) const { XML_ParserFree(parser); }
};
using ExpatParser = std::unique_ptr<XML_ParserStruct, ExpatParserDeleter>;

// Expat expands entities in attribute values; before 2.7 it recurses for each entity inside another. A
// document that declares more entities than this is rejected.
inline constexpr int kMaxEntities = 1000;

}  // namespace platform
