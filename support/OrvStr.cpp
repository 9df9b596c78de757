#include "support/OrvStr.h"

#include <algorithm>
#include <cctype>
#include <cstdarg>
#include <cstdint>
#include <cstring>
#include <memory>
#include <new>
#include <optional>
#include <string_view>

#include "platform/StringList.h"
#include "support/CErr.h"
#include "support/HFSUniStr255.h"
#include "support/PascalString.h"
#include "support/Text.h"

using namespace platform;

namespace {

constexpr std::size_t kCStringBufferSize = 1024;
constexpr std::size_t kListStringBufferSize = 512;

const char* orEmpty(const char* text) { return text == nullptr ? "" : text; }

char upper(char c) { return static_cast<char>(std::toupper(static_cast<unsigned char>(c))); }
char lower(char c) { return static_cast<char>(std::tolower(static_cast<unsigned char>(c))); }
bool isBlank(char c) { return std::isspace(static_cast<unsigned char>(c)) != 0; }

std::string lowered(std::string text) {
    OrvStr::strlwr(text.data());
    return text;
}

// Whether a match of pattern starts before the end of the text inserted at the end of done and ends in it or
// in rest. It cannot lie wholly before that text, because the first match was replaced.
bool meetsInsertion(const std::string& done, std::size_t insertedLength, std::string_view rest,
                    const std::string& pattern) {
    const std::size_t reach = pattern.size() - 1;
    const std::size_t back = std::min(done.size(), insertedLength + reach);
    std::string window(done, done.size() - back);
    window.append(rest.substr(0, reach));
    return window.find(pattern) != std::string::npos;
}

std::unique_ptr<char[]> copyOf(const char* text) {
    const std::size_t size = std::strlen(text) + 1;
    std::unique_ptr<char[]> copy(new (std::nothrow) char[size]);
    if (copy != nullptr) std::memcpy(copy.get(), text, size);
    return copy;
}

unsigned char byteOfPair(const char* pair) {
    const char digits[] = {pair[0], pair[1], '\0'};
    unsigned value = 0;
    std::sscanf(digits, "%2X", &value);
    return static_cast<unsigned char>(value);
}

}  // namespace

int OrvStr::HexChar_Encode(char* dst, const char* src) {
    src = orEmpty(src);
    std::string text;
    int length = 0;
    for (; src[length] != '\0'; ++length) {
        char digits[16];
        const int extended = static_cast<signed char>(src[length]);
        std::snprintf(digits, sizeof digits, "%2X", static_cast<unsigned>(extended));
        text += digits;
    }
    if (dst != nullptr) std::memcpy(dst, text.c_str(), text.size() + 1);
    return length;
}

char* OrvStr::fgetline(char* buf, int size, std::FILE* file) {
    if (file == nullptr || buf == nullptr) return nullptr;
    int count = 0;
    while (count < size) {
        const int c = std::getc(file);
        if (c == EOF || c == '\r' || c == '\n') break;
        buf[count++] = static_cast<char>(c);
    }
    if (count > 0 && count == size) {
        buf[size - 1] = '\0';
        Err.MinorError(static_cast<short>(count), "OrvStr::fgetline()", "Line too long");
    }
    buf[count] = '\0';
    return buf;
}

char* OrvStr::strncpy(char* dst, const char* src, std::size_t len) {
    if (dst == nullptr || len == 0) return dst;
    std::strncpy(dst, orEmpty(src), len - 1);
    dst[len - 1] = '\0';
    return dst;
}

int OrvStr::CountCharOccurance(const char* text, char ch) {
    const std::string_view bytes = orEmpty(text);
    return static_cast<int>(std::count(bytes.begin(), bytes.end(), ch));
}

void OrvStr::strupr(char* text) {
    if (text != nullptr) std::transform(text, text + std::strlen(text), text, upper);
}

void OrvStr::strlwr(char* text) {
    if (text != nullptr) std::transform(text, text + std::strlen(text), text, lower);
}

const char* OrvStr::GetCStrFromList(short listID, short index) {
    static char buffer[kListStringBufferSize];
    return strncpy(buffer, stringFromList(listID, index).c_str(), sizeof buffer);
}

const unsigned char* OrvStr::GetPStrFromList(short listID, short index) {
    static Str255 buffer;
    CopyCStringToPascal(stringFromList(listID, index).c_str(), buffer);
    return buffer;
}

const char* OrvStr::ConvertedCStr(const std::string& text, CFStringEncoding encoding) {
    static char buffer[kCStringBufferSize];
    if (encoding == kCFStringEncodingMacRoman && isASCII(text)) return text.c_str();
    const std::optional<std::string> converted = convertText(text, kCFStringEncodingUTF8, encoding);
    if (!converted || converted->size() >= sizeof buffer) return nullptr;
    std::memcpy(buffer, converted->c_str(), converted->size() + 1);
    return buffer;
}

// index is an int because va_start does not allow a short.
int OrvStr::ResStrSprintf(char* dst, short listID, int index, ...) {
    if (dst == nullptr) return 0;
    const std::string format = stringFromList(listID, static_cast<short>(index));
    std::va_list arguments;
    va_start(arguments, index);
    const int length = std::vsprintf(dst, format.c_str(), arguments);
    va_end(arguments);
    return length;
}

void OrvStr::CStr2UniChar(const char* text, char* out, int outSize, int& length) {
    const std::optional<std::string> converted =
        convertText(orEmpty(text), kCFStringEncodingUTF8, kCFStringEncodingUnicode);
    Err.CheckNull(converted ? &*converted : nullptr,
                  "static void OrvStr::CStr2UniChar(const char*, char*, int, int&)",
                  "Failed to create CFStringRef");
    constexpr std::size_t kUnit = sizeof(std::uint16_t);
    length = static_cast<int>(converted->size() / kUnit);
    if (out == nullptr || outSize <= 0) return;
    // Includes the terminator if there is room for it.
    const std::size_t room = static_cast<std::size_t>(outSize) / kUnit * kUnit;
    std::memset(out, 0, std::min(room, converted->size() + kUnit));
    std::memcpy(out, converted->data(), std::min(room, converted->size()));
}

bool OrvStr::CStr2HFSUniStr(const char* text, HFSUniStr255& out) {
    if (text == nullptr) return false;
    const std::optional<std::string> converted =
        convertText(text, kCFStringEncodingMacRoman, kCFStringEncodingUnicode);
    if (!converted || converted->size() > sizeof out.unicode) return false;
    std::memcpy(out.unicode.data(), converted->data(), converted->size());
    out.length = static_cast<std::uint16_t>(converted->size() / sizeof out.unicode[0]);
    return true;
}

void OrvStr::ClearLeadingWhitespace(std::string& text) {
    text.erase(text.begin(), std::find_if_not(text.begin(), text.end(), isBlank));
}

// Does nothing if from equals to.
void OrvStr::ReplaceChars(char* text, char from, char to) {
    if (text == nullptr || from == to) return;
    std::replace(text, text + std::strlen(text), from, to);
}

int OrvStr::CompareStrings(const char* a, const char* b) {
    constexpr char kFunction[] = "static int OrvStr::CompareStrings(const char*, const char*)";
    const std::unique_ptr<char[]> locStrA = copyOf(orEmpty(a));
    Err.CheckNull(locStrA.get(), kFunction, "Failed to alloc char array locStrA");
    const std::unique_ptr<char[]> locStrB = copyOf(orEmpty(b));
    Err.CheckNull(locStrB.get(), kFunction, "Failed to alloc char array locStrB");
    const int order = std::strcoll(PascalPart(locStrA.get()).c_str(), PascalPart(locStrB.get()).c_str());
    return (order > 0) - (order < 0);
}

int OrvStr::HexChar_Decode(const char* src, char* dst) {
    src = orEmpty(src);
    const int pairs = static_cast<int>(std::strlen(src) / 2);
    if (dst == nullptr) return pairs;
    for (int i = 0; i < pairs; ++i) dst[i] = static_cast<char>(byteOfPair(src + 2 * i));
    dst[pairs] = '\0';
    return pairs;
}

void OrvStr::CorrectCase(std::string& text) {
    bool startsWord = true;
    for (char& c : text) {
        const char changed = startsWord ? upper(c) : lower(c);
        startsWord = isBlank(c) || std::string_view("-,.'").find(c) != std::string_view::npos;
        c = changed;
    }
}

// One pass over text. The search goes on only with a match behind the inserted text, so every match lies
// wholly in the part not yet done.
int OrvStr::ReplaceStrings(char* text, const char* find, const char* replace, bool ignoreCase) {
    if (text == nullptr || find == nullptr || *find == '\0') return 0;
    if (!ignoreCase && std::strstr(text, find) == nullptr) return 0;

    const std::string original = text;
    const std::string searched = ignoreCase ? lowered(original) : original;
    const std::string pattern = ignoreCase ? lowered(find) : find;
    const std::string_view inserted = orEmpty(replace);
    std::string result, searchedResult;
    std::size_t done = 0;
    int count = 0;
    for (std::size_t found = searched.find(pattern); found != std::string::npos;
         found = searched.find(pattern, done)) {
        result.append(original, done, found - done).append(inserted);
        searchedResult.append(searched, done, found - done).append(inserted);
        done = found + pattern.size();
        ++count;
        const std::string_view rest = std::string_view(searched).substr(done);
        if (meetsInsertion(searchedResult, inserted.size(), rest, pattern)) break;
    }
    result.append(original, done);
    std::memcpy(text, result.c_str(), result.size() + 1);
    return count;
}

bool OrvStr::CheckAppendSuffix(char* name, const char* suffix, bool checkOnly) {
    if (name == nullptr) return true;
    suffix = orEmpty(suffix);
    const char* dot = std::strrchr(name, '.');
    if (dot != nullptr && std::strcmp(dot + 1, suffix) == 0) return false;
    if (checkOnly) return true;
    std::strcat(name, ".");
    std::strcat(name, suffix);
    return true;
}
