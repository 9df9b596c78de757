#pragma once

#include <cstddef>
#include <cstdio>
#include <string>

#include "platform/TextEncoding.h"

struct HFSUniStr255;

// C strings, Pascal strings and the platform's UTF-8 strings. Texts returned as pointers lie in static
// buffers that the next call of the same function overwrites. A null text is an empty one.
class OrvStr {
  public:
    // Appends the upper-case hexadecimal form of each byte to an emptied dst: two places, the first a blank
    // for a byte below 0x10; eight digits, sign-extended, for one above 0x7F. Returns the length of src.
    static int HexChar_Encode(char* dst, const char* src);

    // Reads a line without its end (a CR or an LF: CR LF ends two) into buf, which has room for size + 1
    // bytes. Warns through Err and cuts a line of size bytes or more. At the end of the file the line is
    // empty. Returns buf, or null for a null file.
    static char* fgetline(char* buf, int size, std::FILE* file);

    // As the library's, but always terminated. Returns dst.
    static char* strncpy(char* dst, const char* src, std::size_t len);

    static int CountCharOccurance(const char* text, char ch);

    // In place, byte by byte.
    static void strupr(char* text);
    static void strlwr(char* text);

    // Entry index (from 1) of a string list; empty when there is none.
    static const char* GetCStrFromList(short listID, short index);
    static const unsigned char* GetPStrFromList(short listID, short index);

    // text in an encoding: its own storage where its bytes are already in that encoding, else a static
    // buffer. Null when it does not fit the buffer or cannot be converted.
    static const char* GetCStrFromCFStr(const std::string& text, platform::CFStringEncoding encoding) {
        return encoding == platform::kCFStringEncodingUTF8 ? text.c_str() : ConvertedCStr(text, encoding);
    }

    // Formats the further arguments with a string-list entry into dst, which has room for all of it. Returns
    // the length.
    static int ResStrSprintf(char* dst, short listID, int index, ...);

    // Writes UTF-8 text as UTF-16, as much as fits into outSize bytes, and sets length to the length of all
    // of it in 16-bit units. Text that is not UTF-8 ends the process through Err.
    static void CStr2UniChar(const char* text, char* out, int outSize, int& length);

    // The same for Mac Roman text. Returns false, with out untouched, when there is no text or it does not
    // fit.
    static bool CStr2HFSUniStr(const char* text, HFSUniStr255& out);

    static void ClearLeadingWhitespace(std::string& text);

    static void ReplaceChars(char* text, char from, char to);

    // Compares at most 255 bytes in the order of the locale. Returns -1, 0 or 1.
    static int CompareStrings(const char* a, const char* b);

    // Appends each pair of hexadecimal digits in src as a byte to an emptied dst; a pair that is none gives a
    // zero. Returns the number of pairs.
    static int HexChar_Decode(const char* src, char* dst);

    // Upper case at the start and after a blank, '-', ',', '.' or an apostrophe, lower case elsewhere.
    static void CorrectCase(std::string& text);

    // Replaces occurrences of find in place; text has room for the result. After each replacement the search
    // begins at the start again, and ends where it meets a match that starts before the end of the text just
    // inserted: "&" replaced by "&amp;" is replaced once. Returns the number of replacements.
    static int ReplaceStrings(char* text, const char* find, const char* replace, bool ignoreCase);

    // Whether name lacks the suffix (without its dot, case counts). Appends it then, unless checkOnly is set;
    // name has room for it.
    static bool CheckAppendSuffix(char* name, const char* suffix, bool checkOnly);

  private:
    static const char* ConvertedCStr(const std::string& text, platform::CFStringEncoding encoding);
};
