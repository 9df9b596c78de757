#pragma once

#include <string>

// Strings with their length in the first byte, at most 255 bytes of text after it.
inline constexpr int kMaxPascalLength = 255;
using Str255 = unsigned char[kMaxPascalLength + 1];

// Both cut what does not fit. source may be the same storage as the Pascal string, which then takes no more
// room than the C string did.
void CopyCStringToPascal(const char* source, unsigned char* dest);
void c2pstrcpy(unsigned char* dest, const char* source);

// The text of a Pascal string.
std::string PascalText(const unsigned char* pascal);
// As much of a text as a Pascal string holds.
std::string PascalPart(const std::string& text);
