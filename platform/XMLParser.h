#pragma once

#include <string>

#include "platform/portable/CFXMLTree.h"

namespace platform {

// A document with more deeply nested elements cannot be parsed.
inline constexpr int kMaxXMLDepth = 1000;

// The tree of a document in any encoding it declares, under a node of type document. Drops white space alone
// between markup or references. A reference is a node of its own; no entity is replaced and nothing external
// is loaded. Null if the document is not well formed.
CFXMLTreeRef parseXML(const std::string& bytes);

}  // namespace platform
