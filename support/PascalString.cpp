#include "support/PascalString.h"

#include <algorithm>
#include <cstring>

void CopyCStringToPascal(const char* source, unsigned char* dest) {
    if (dest == nullptr) return;
    const std::size_t length =
        source == nullptr ? 0 : std::min<std::size_t>(std::strlen(source), kMaxPascalLength);
    if (length > 0) std::memmove(dest + 1, source, length);
    dest[0] = static_cast<unsigned char>(length);
}

void c2pstrcpy(unsigned char* dest, const char* source) { CopyCStringToPascal(source, dest); }

std::string PascalText(const unsigned char* pascal) {
    return std::string(reinterpret_cast<const char*>(pascal) + 1, pascal[0]);
}

std::string PascalPart(const std::string& text) {
    Str255 pascal;
    CopyCStringToPascal(text.c_str(), pascal);
    return PascalText(pascal);
}
