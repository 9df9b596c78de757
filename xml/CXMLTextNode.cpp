#include "xml/CXMLTextNode.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <memory>
#include <string_view>

#include "support/CErr.h"
#include "support/OrvStr.h"

using namespace platform;

namespace {

constexpr char kInternalCreate[] = "void CXMLTextNode::InternalCreateWithCStr(const char*, CFStringEncoding)";

struct Replacement {
    const char* find;
    const char* replace;
};
// The ampersand comes first, so that the ampersands of later replacements are not escaped again.
constexpr Replacement kReplacements[] = {{"&", "&amp;"}, {">", "&gt;"}, {"<", "&lt;"}, {"'", "&apos;"}};
constexpr std::size_t kLargestGrowth = 5;  // bytes, for an apostrophe

std::size_t CountSpecialCharacters(std::string_view text) {
    return static_cast<std::size_t>(std::count_if(text.begin(), text.end(), [](char byte) {
        return byte == '&' || byte == '>' || byte == '<' || byte == '\'';
    }));
}

bool IsSpace(char byte) { return std::strchr(" \t\n\v\f\r", byte) != nullptr; }

bool IsHexadecimal(std::string_view number) { return number.starts_with("0x") || number.starts_with("0X"); }

// A number without leading blanks or sign.
double UnsignedToDouble(std::string_view number) {
    const bool isHexadecimal = IsHexadecimal(number);
    if (isHexadecimal) number.remove_prefix(2);
    if (number.starts_with('-')) return 0.0;
    double value = 0.0;
    const auto result = std::from_chars(number.data(), number.data() + number.size(), value,
                                        isHexadecimal ? std::chars_format::hex : std::chars_format::general);
    if (result.ec != std::errc::result_out_of_range) return value;
    const bool isTooSmall = std::find(number.data(), result.ptr, '-') != result.ptr;
    return isTooSmall ? 0.0 : HUGE_VAL;
}

// Like std::atof, but with a decimal point in every locale.
double ToDouble(std::string_view text) {
    while (!text.empty() && IsSpace(text.front())) text.remove_prefix(1);
    const bool isNegative = text.starts_with('-');
    if (isNegative || text.starts_with('+')) text.remove_prefix(1);
    const double value = UnsignedToDouble(text);
    return isNegative ? -value : value;
}

// Like "%.*f", but with a decimal point in every locale.
std::string FixedText(double value, int precision) {
    constexpr std::size_t kMaxBeforePoint = std::numeric_limits<double>::max_exponent10 + 3;
    std::string text(kMaxBeforePoint + static_cast<std::size_t>(std::max(precision, 6)), '\0');
    const auto result =
        std::to_chars(text.data(), text.data() + text.size(), value, std::chars_format::fixed, precision);
    text.resize(static_cast<std::size_t>(result.ptr - text.data()));
    return text;
}

}  // namespace

CXMLTextNode::CXMLTextNode(const CFXMLNode* text) {
    if (CountSpecialCharacters(text->GetString()) == 0) {
        SetNode(CFXMLNodeRef(text), kInternalCreate);
    } else {
        InternalCreateWithCStr(text->GetString().c_str(), kCFStringEncodingUTF8);
    }
}

CXMLTextNode::CXMLTextNode(const char* text, CFStringEncoding encoding) {
    InternalCreateWithCStr(text, encoding);
}

CXMLTextNode::CXMLTextNode(double value) : CXMLTextNode(value, 5) {}

CXMLTextNode::CXMLTextNode(double value, int precision) {
    InternalCreateWithCStr(FixedText(value, precision).c_str(), kCFStringEncodingMacRoman);
}

CXMLTextNode::CXMLTextNode(int value) {
    InternalCreateWithCStr(std::to_string(value).c_str(), kCFStringEncodingMacRoman);
}

int CXMLTextNode::GetValueAsInteger() {
    char text[kTextBufferSize] = "";
    GetValueAsString(text, sizeof text);
    return text[0] == '\0' ? 0 : std::atoi(text);
}

double CXMLTextNode::GetValueAsDouble() {
    char text[kTextBufferSize] = "";
    GetValueAsString(text, sizeof text);
    return text[0] == '\0' ? 0.0 : ToDouble(text);
}

void CXMLTextNode::GetValueAsString(char* buffer, int size) {
    const std::string* text = GetString();
    if (!text || size <= 0 || text->size() >= static_cast<std::size_t>(size)) return;
    std::memcpy(buffer, text->c_str(), text->size() + 1);
}

void CXMLTextNode::ReplaceSpecialCharacters(char* text) {
    for (const Replacement& replacement : kReplacements) {
        OrvStr::ReplaceStrings(text, replacement.find, replacement.replace, false);
    }
}

void CXMLTextNode::InternalCreateWithCStr(const char* text, CFStringEncoding encoding) {
    if (!text) return;
    const std::size_t length = std::strlen(text);
    const std::size_t specialCount = CountSpecialCharacters({text, length});
    if (specialCount == 0) return CreateWithString(CreateString(text, encoding));
    std::unique_ptr<char[]> working(new (std::nothrow) char[length + kLargestGrowth * specialCount + 1]);
    Err.CheckNull(working.get(), kInternalCreate, "Failed to allocate local string buffer");
    std::memcpy(working.get(), text, length + 1);
    ReplaceSpecialCharacters(working.get());
    CreateWithString(CreateString(working.get(), encoding));
}

void CXMLTextNode::CreateWithString(std::optional<std::string> string) {
    if (string) SetNode(CFXMLNodeCreate(kCFXMLNodeTypeText, std::move(*string)), kInternalCreate);
}
