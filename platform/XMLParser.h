#pragma once

#include <string>

#include "platform/portable/CFXMLTree.h"

namespace platform {

// Elements nested deeper than this make a document that cannot be parsed.
inline constexpr int kMaxXMLDepth = 1000;

// The tree of a document in any encoding that it declares, under a node of type document. White space alone
// between markup or references is dropped. A reference is a node of its own; no entity is replaced and
// nothing external is loaded. Null when the document is not well formed.
CFXMLTreeRef parseXML(const std::string& bytes);

}  // namespace platform
