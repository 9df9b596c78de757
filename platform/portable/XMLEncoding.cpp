#include "platform/portable/XMLEncoding.h"

#include <algorithm>
#include <cctype>

namespace platform {

namespace {

using namespace std::string_view_literals;

// The value of encoding="..." in the XML declaration at the start of bytes.
std::string declaredEncoding(std::string_view bytes) {
    if (!bytes.starts_with("<?xml")) return {};
    std::string_view declaration = bytes.substr(0, bytes.find("?>"));
    std::size_t at = declaration.find("encoding");
    if (at == declaration.npos) return {};
    at = declaration.find_first_of("\"'", at);
    if (at == declaration.npos) return {};
    std::string_view value = declaration.substr(at + 1);
    return std::string(value.substr(0, value.find(declaration[at])));
}

}  // namespace

XMLEncoding detectXMLEncoding(std::string_view bytes) {
    if (bytes.starts_with("\xEF\xBB\xBF")) return {"UTF-8", 3};
    if (bytes.starts_with("\xFE\xFF")) return {"UTF-16BE", 2};
    if (bytes.starts_with("\xFF\xFE")) return {"UTF-16LE", 2};
    if (bytes.starts_with("\0<"sv)) return {"UTF-16BE"};
    if (bytes.starts_with("<\0"sv)) return {"UTF-16LE"};
    std::string declared = declaredEncoding(bytes);
    return {declared.empty() ? "UTF-8" : declared};
}

bool isUTF8Name(std::string_view encodingName) {
    return std::ranges::equal(encodingName, "UTF-8"sv, [](unsigned char byte, unsigned char upper) {
        return std::toupper(byte) == upper;
    });
}

}  // namespace platform
