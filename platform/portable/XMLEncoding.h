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

// Compares without case.
bool isUTF8Name(std::string_view encodingName);

}  // namespace platform
