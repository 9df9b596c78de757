#pragma once

#include <optional>
#include <string>

#include "platform/CFXMLTree.h"

namespace platform {

// The document under tree as text, in the encoding that it was parsed from or else UTF-8. Nothing when some
// of it has no counterpart in that encoding.
std::optional<std::string> serializeXML(const CFXMLTree* tree);

}  // namespace platform
