#pragma once

#include <string>

// Strings whose first byte is their length, followed by at most 255 bytes of text.
inline constexpr int kMaxPascalLength = 255;
using Str255 = unsigned char[kMaxPascalLength + 1];

// Both cut what does not fit. source may be the storage of the Pascal string itself, which then takes no more
// room than the C string did.
void CopyCStringToPascal(const char* source, unsigned char* dest);
void c2pstrcpy(unsigned char* dest, const char* source);

// The text of a Pascal string.
std::string PascalText(const unsigned char* pascal);
// As much of a text as fits a Pascal string.
std::string PascalPart(const std::string& text);
