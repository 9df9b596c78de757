#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace platform {

// How a document's bytes are encoded.
struct XMLEncoding {
    std::string name;
    std::size_t markLength = 0;  // length of the byte order mark, 0 without one
};

// Uses the byte order mark, or else the declaration; UTF-8 when there is neither.
XMLEncoding detectXMLEncoding(std::string_view bytes);

// The encoding that the declaration at the start of a document names; empty when there is none.
std::string declaredXMLEncoding(std::string_view bytes);

// Whether a text in UTF-8 without its mark starts like one in UTF-16 or has another mark. Parsers would
// switch encodings there.
bool looksLikeAnotherXMLEncoding(std::string_view utf8);

// Compares without case.
bool isUTF8Name(std::string_view encodingName);

}  // namespace platform
