#pragma once

#include <string>

#include "platform/portable/CFXMLTree.h"

namespace platform {

// A document whose elements are nested deeper than this cannot be parsed.
inline constexpr int kMaxXMLDepth = 1000;

// Parses a document, in whatever encoding it declares, into a tree under a node of type document. White space
// on its own between markup or references is dropped. A reference is a node of its own; no entity is expanded
// and nothing external is loaded. Null when the document is not well formed.
CFXMLTreeRef parseXML(const std::string& bytes);

}  // namespace platform
