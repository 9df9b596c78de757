#include "platform/portable/XMLEncoding.h"

#include <algorithm>
#include <cctype>

namespace platform {

using namespace std::string_view_literals;

std::string declaredXMLEncoding(std::string_view bytes) {
    if (!bytes.starts_with("<?xml")) return {};
    std::string_view declaration = bytes.substr(0, bytes.find("?>"));
    std::size_t at = declaration.find("encoding");
    if (at == declaration.npos) return {};
    at = declaration.find_first_of("\"'", at);
    if (at == declaration.npos) return {};
    std::string_view value = declaration.substr(at + 1);
    return std::string(value.substr(0, value.find(declaration[at])));
}

XMLEncoding detectXMLEncoding(std::string_view bytes) {
    if (bytes.starts_with("\xEF\xBB\xBF")) return {"UTF-8", 3};
    if (bytes.starts_with("\xFE\xFF")) return {"UTF-16BE", 2};
    if (bytes.starts_with("\xFF\xFE")) return {"UTF-16LE", 2};
    if (bytes.starts_with("\0<"sv)) return {"UTF-16BE"};
    if (bytes.starts_with("<\0"sv)) return {"UTF-16LE"};
    std::string declared = declaredXMLEncoding(bytes);
    return {declared.empty() ? "UTF-8" : declared};
}

bool looksLikeAnotherXMLEncoding(std::string_view utf8) {
    const bool hasMark = detectXMLEncoding(utf8).markLength > 0;
    return hasMark || utf8.substr(0, 2).find('\0') != utf8.npos;
}

bool isUTF8Name(std::string_view encodingName) {
    return std::ranges::equal(encodingName, "UTF-8"sv, [](unsigned char byte, unsigned char upper) {
        return std::toupper(byte) == upper;
    });
}

}  // namespace platform
