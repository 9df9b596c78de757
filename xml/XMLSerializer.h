#pragma once

#include <optional>
#include <string>

#include "platform/portable/CFXMLTree.h"

// The document under tree as text, in the encoding that it was parsed from or else UTF-8. Nothing when some
// of it has no counterpart in that encoding.
std::optional<std::string> serializeXML(const platform::CFXMLTree* tree);
