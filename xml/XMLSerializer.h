#pragma once

#include <optional>
#include <string>

#include "platform/portable/CFXMLTree.h"

// The document under tree as text, in the encoding it was parsed from, or else UTF-8. Empty if that encoding
// cannot represent some of it.
std::optional<std::string> serializeXML(const platform::CFXMLTree* tree);
