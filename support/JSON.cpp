#include "support/JSON.h"

#include <charconv>
#include <cmath>
#include <cstdio>

namespace {

// JavaScript took these two for ends of lines before it took in all of JSON.
constexpr std::string_view kLineSeparator = "\u2028", kParagraphSeparator = "\u2029";

// "</script>" and "<!--" mean something within a page.
bool isSafe(unsigned char character) {
    return character >= ' ' && character != 0x7f && character != '"' && character != '\\' && character != '<';
}

std::string escape(unsigned code) {
    char text[8];
    std::snprintf(text, sizeof text, "\\u%04x", code);
    return text;
}

}  // namespace

std::string jsonText(std::string_view text) {
    std::string result = "\"";
    for (std::size_t at = 0; at < text.size(); ++at) {
        const std::string_view rest = text.substr(at);
        const bool isLine = rest.starts_with(kLineSeparator);
        if (isLine || rest.starts_with(kParagraphSeparator)) {
            result += escape(isLine ? 0x2028 : 0x2029);
            at += kLineSeparator.size() - 1;
        } else if (isSafe(static_cast<unsigned char>(text[at]))) {
            result += text[at];
        } else {
            result += escape(static_cast<unsigned char>(text[at]));
        }
    }
    return result + '"';
}

std::string jsonNumber(double number) {
    if (!std::isfinite(number)) return "null";
    char text[32];
    const auto written = std::to_chars(text, text + sizeof text, number);
    return std::string(text, written.ptr);
}
