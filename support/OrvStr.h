#pragma once

#include <cstddef>
#include <cstdio>
#include <string>

#include "platform/TextEncoding.h"

struct HFSUniStr255;

// C strings, Pascal strings and the platform's UTF-8 strings. Returned pointers refer to static buffers that
// the next call of the same function overwrites. A null text counts as empty.
class OrvStr {
  public:
    // Replaces dst with the upper-case hexadecimal form of each byte: two characters, the first blank for a
    // byte below 0x10; eight digits, sign-extended, for a byte above 0x7F. Returns the length of src.
    static int HexChar_Encode(char* dst, const char* src);

    // Reads a line without its end (a CR or an LF; CR LF ends two lines) into buf, which must have room for
    // size + 1 bytes. Warns through Err about a line of size bytes or more and cuts it. At the end of the
    // file the line is empty. Returns buf, or null for a null file.
    static char* fgetline(char* buf, int size, std::FILE* file);

    // Like std::strncpy, but always terminates. Returns dst.
    static char* strncpy(char* dst, const char* src, std::size_t len);

    static int CountCharOccurance(const char* text, char ch);

    // In place, byte by byte.
    static void strupr(char* text);
    static void strlwr(char* text);

    // Entry index (from 1) of a string list; empty if there is no such entry.
    static const char* GetCStrFromList(short listID, short index);
    static const unsigned char* GetPStrFromList(short listID, short index);

    // text in an encoding: its own storage if the bytes are the same, else a static buffer. Null if it does
    // not fit the buffer or cannot be converted.
    static const char* GetCStrFromCFStr(const std::string& text, platform::CFStringEncoding encoding) {
        return encoding == platform::kCFStringEncodingUTF8 ? text.c_str() : ConvertedCStr(text, encoding);
    }

    // Formats the remaining arguments with a string-list entry into dst, which must have room for the result.
    // Returns the length.
    static int ResStrSprintf(char* dst, short listID, int index, ...);

    // Writes as much of a UTF-8 text as fits into outSize bytes as UTF-16, and sets length to the full length
    // in 16-bit units. Text that is not UTF-8 ends the process through Err.
    static void CStr2UniChar(const char* text, char* out, int outSize, int& length);

    // The same for Mac Roman text. Returns false and leaves out untouched if the text is null or does not
    // fit.
    static bool CStr2HFSUniStr(const char* text, HFSUniStr255& out);

    static void ClearLeadingWhitespace(std::string& text);

    static void ReplaceChars(char* text, char from, char to);

    // Compares at most 255 bytes in the order of the locale. Returns -1, 0 or 1.
    static int CompareStrings(const char* a, const char* b);

    // Replaces dst with one byte for each pair of hexadecimal digits in src, 0 for an invalid pair. Returns
    // the number of pairs.
    static int HexChar_Decode(const char* src, char* dst);

    // Upper case at the start and after a blank, '-', ',', '.' or an apostrophe, lower case elsewhere.
    static void CorrectCase(std::string& text);

    // Replaces occurrences of find in place; text must have room for the result. After each replacement the
    // search restarts at the beginning. It stops at a match that starts before the end of the text just
    // inserted, so "&" is replaced by "&amp;" only once. Returns the number of replacements.
    static int ReplaceStrings(char* text, const char* find, const char* replace, bool ignoreCase);

    // Whether name lacks the suffix, which is given without its dot and is case-sensitive. If so, appends it
    // unless checkOnly is set; name must have room for it.
    static bool CheckAppendSuffix(char* name, const char* suffix, bool checkOnly);

  private:
    static const char* ConvertedCStr(const std::string& text, platform::CFStringEncoding encoding);
};
