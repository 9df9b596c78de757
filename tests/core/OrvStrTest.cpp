#include "support/OrvStr.h"

#include <array>
#include <cstring>

#include "support/HFSUniStr255.h"
#include "support/PascalString.h"
#include "tests/TemporaryFolder.h"
#include "tests/standins/StandIns.h"
#include "tests/support/Feed.h"

using namespace platform;

namespace {

using OrvStrTest = standins::Test;
using Replaced = std::pair<int, std::string>;

Replaced replaced(const std::string& text, const char* find, const char* replace, bool ignoreCase = false) {
    std::vector<char> buffer(text.size() * 8 + 64);
    std::strcpy(buffer.data(), text.c_str());
    const int count = OrvStr::ReplaceStrings(buffer.data(), find, replace, ignoreCase);
    return {count, buffer.data()};
}

// The rule word by word, searching from the start after every replacement.
Replaced replacedByTheRule(std::string text, const std::string& find, const std::string& replace) {
    int count = 0;
    std::size_t found = text.find(find);
    while (found != std::string::npos) {
        text.replace(found, find.size(), replace);
        ++count;
        const std::size_t next = text.find(find);
        if (next == std::string::npos || next < found + replace.size()) break;
        found = next;
    }
    return {count, text};
}

TEST_F(OrvStrTest, ReplacingOnceOverTheTextEqualsSearchingFromItsStart) {
    for (int bits = 1; bits < 1 << 10; ++bits) {  // below its highest one, a zero for each a
        std::string text;
        for (int rest = bits; rest > 1; rest >>= 1) text += rest & 1 ? 'b' : 'a';
        for (const char* find : {"a", "b", "aa", "ab", "aba", "abab"})
            for (const char* replace : {"", "a", "b", "ab", "ba", "bab", "aab"})
                ASSERT_EQ(replaced(text, find, replace), replacedByTheRule(text, find, replace))
                    << text << " " << find << " " << replace;
    }
}

TEST_F(OrvStrTest, ReplacingMayIgnoreCase) {
    EXPECT_EQ(replaced("plain", "", "x"), Replaced(0, "plain"));
    EXPECT_EQ(replaced("Say ABC", "abc", "-"), Replaced(0, "Say ABC"));
    EXPECT_EQ(replaced("Say ABC, Abc!", "abc", "Xyz", true), Replaced(2, "Say Xyz, Xyz!"));
    EXPECT_EQ(replaced("Say abc", "ABC", "-", true), Replaced(1, "Say -"));
    // The inserted text is compared as it stands: "B" is no match for the lower-cased pattern.
    EXPECT_EQ(replaced("b-b", "b", "B", true), Replaced(2, "B-B"));
    EXPECT_EQ(OrvStr::ReplaceStrings(nullptr, "a", "b", false), 0);
}

TEST_F(OrvStrTest, TextAlreadyInTheEncodingIsItsOwnStorageAndOtherIsConverted) {
    const std::string ascii(3000, 'a'), accented = "T\xC5\xABpuna" + ascii;
    const std::string longest = repeated("\xC3\xA9", 1023);
    EXPECT_EQ(OrvStr::GetCStrFromCFStr(ascii, kCFStringEncodingMacRoman), ascii.c_str());
    EXPECT_EQ(OrvStr::GetCStrFromCFStr(accented, kCFStringEncodingUTF8), accented.c_str());
    // Wherever the accent stands among the bytes that are looked at together.
    EXPECT_STREQ(OrvStr::GetCStrFromCFStr("aaaaaaaa\xC3\xA9", kCFStringEncodingMacRoman), "aaaaaaaa\x8E");
    EXPECT_STREQ(OrvStr::GetCStrFromCFStr("\xC3\xA9llo llo", kCFStringEncodingMacRoman), "\x8Ello llo");
    EXPECT_EQ(OrvStr::GetCStrFromCFStr(longest, kCFStringEncodingMacRoman), std::string(1023, '\x8E'));
    for (const std::string& text : {longest + "\xC3\xA9", std::string("T\xC5\xABpuna"), std::string("\xFF")})
        EXPECT_EQ(OrvStr::GetCStrFromCFStr(text, kCFStringEncodingMacRoman), nullptr) << text;
    EXPECT_EQ(OrvStr::GetCStrFromCFStr("text", 0x7777), nullptr);
}

TEST_F(OrvStrTest, CopyingIsAlwaysTerminated) {
    char buffer[] = "........";
    EXPECT_EQ(OrvStr::strncpy(buffer, "abcdef", 4), buffer);
    EXPECT_EQ(std::string(buffer, 8), std::string("abc\0....", 8));
    OrvStr::strncpy(buffer, "a", 4);
    EXPECT_EQ(std::string(buffer, 5), std::string("a\0\0\0.", 5));
    OrvStr::strncpy(buffer, "xyz", 0);
    EXPECT_STREQ(buffer, "a");
}

TEST_F(OrvStrTest, ASuffixIsAppendedOnlyWhereItIsMissing) {
    char name[64] = "page";
    EXPECT_TRUE(OrvStr::CheckAppendSuffix(name, "html", true));
    EXPECT_STREQ(name, "page");
    EXPECT_TRUE(OrvStr::CheckAppendSuffix(name, "html", false));
    EXPECT_FALSE(OrvStr::CheckAppendSuffix(name, "html", false));
    EXPECT_TRUE(OrvStr::CheckAppendSuffix(name, "HTML", false));
    EXPECT_STREQ(name, "page.html.HTML");
}

TEST_F(OrvStrTest, ALineEndsAtEitherLineEndAndALongOneIsCutWithAWarning) {
    const TemporaryFolder forTheLog;
    std::FILE* const file = std::tmpfile();
    std::fputs("one\r\ntwo\nabcdefg\nend", file);
    std::rewind(file);
    char buffer[] = "......";
    for (const char* line : {"one", "", "two", "abc", "efg", "end", ""}) {
        EXPECT_EQ(OrvStr::fgetline(buffer, 4, file), buffer);
        EXPECT_STREQ(buffer, line);
        EXPECT_EQ(buffer[5], '.');
    }
    std::fclose(file);
    EXPECT_EQ(OrvStr::fgetline(buffer, 4, nullptr), nullptr);
    const auto& alerts = standins::desktop.alerts;
    ASSERT_EQ(alerts.size(), 1u);
    EXPECT_EQ(alerts[0].text, "OrvStr::fgetline()");
    EXPECT_THAT(alerts[0].explanation, testing::EndsWith(" Error Code:  4\n Message   :  Line too long\n\n"));
}

TEST_F(OrvStrTest, BytesBecomeHexadecimalDigitsAndComeBack) {
    char digits[64], bytes[8];
    EXPECT_EQ(OrvStr::HexChar_Encode(digits, "Az\n\x80"), 4);
    EXPECT_STREQ(digits, "417A AFFFFFF80");
    EXPECT_EQ(OrvStr::HexChar_Decode("417A a8", bytes), 3);
    EXPECT_STREQ(bytes, "Az\n");
    EXPECT_EQ(OrvStr::HexChar_Decode("41zz42", bytes), 3);
    EXPECT_EQ(std::string(bytes, 4), std::string("A\0B\0", 4));
}

TEST_F(OrvStrTest, TextBecomesUTF16AndEndsTheProcessWhereItCannot) {
    std::array<char16_t, 4> out;
    out.fill(u'.');
    char* const bytes = reinterpret_cast<char*>(out.data());
    int length = 0;
    OrvStr::CStr2UniChar("T\xC5\xAB", bytes, sizeof out, length);
    EXPECT_EQ(length, 2);
    EXPECT_EQ(out, (std::array<char16_t, 4>{u'T', u'\u016B', 0, u'.'}));
    OrvStr::CStr2UniChar("abcdef", bytes, 5, length);
    EXPECT_EQ(length, 6);
    EXPECT_EQ(out, (std::array<char16_t, 4>{u'a', u'b', 0, u'.'}));

    const TemporaryFolder forTheLog;
    EXPECT_EXIT(OrvStr::CStr2UniChar("\xFF", bytes, sizeof out, length), testing::ExitedWithCode(0), "");
}

TEST_F(OrvStrTest, MacRomanTextBecomesAFileName) {
    HFSUniStr255 name;
    EXPECT_TRUE(OrvStr::CStr2HFSUniStr("Caf\x8E", name));
    EXPECT_EQ(name.length, 4);
    EXPECT_EQ(name.unicode[3], u'\u00E9');
    EXPECT_TRUE(OrvStr::CStr2HFSUniStr(std::string(255, 'n').c_str(), name));
    EXPECT_EQ(name.length, 255);
    EXPECT_FALSE(OrvStr::CStr2HFSUniStr(std::string(256, 'n').c_str(), name));
    EXPECT_FALSE(OrvStr::CStr2HFSUniStr(nullptr, name));
}

TEST_F(OrvStrTest, ListEntriesAreTextsAndFormats) {
    char text[64];
    EXPECT_EQ(OrvStr::ResStrSprintf(text, 128, 1, "three", 4), 10);
    EXPECT_STREQ(text, "three of 4");
    EXPECT_EQ(std::strlen(OrvStr::GetCStrFromList(128, 2)), 511u);
    EXPECT_STREQ(OrvStr::GetCStrFromList(128, 3), "");
    EXPECT_EQ(PascalText(OrvStr::GetPStrFromList(128, 1)), "%s of %d");
    EXPECT_EQ(OrvStr::GetPStrFromList(128, 2)[0], 255);
}

TEST_F(OrvStrTest, CharactersAreCountedChangedTrimmedAndCompared) {
    char text[] = "a-b-c";
    EXPECT_EQ(OrvStr::CountCharOccurance(text, '-'), 2);
    OrvStr::ReplaceChars(text, '-', '-');
    OrvStr::ReplaceChars(text, '-', '+');
    OrvStr::strupr(text);
    EXPECT_STREQ(text, "A+B+C");
    OrvStr::strlwr(text);
    EXPECT_STREQ(text, "a+b+c");

    std::string words = " \t\n o'NEILL-smith,JR.aT the sEA ", blanks = " \t ";
    OrvStr::CorrectCase(words);
    OrvStr::ClearLeadingWhitespace(words);
    OrvStr::ClearLeadingWhitespace(blanks);
    EXPECT_EQ(words + blanks, "O'Neill-Smith,Jr.At The Sea ");

    std::string withZero("aB\0Cd", 5);
    OrvStr::CorrectCase(withZero);
    EXPECT_EQ(withZero, std::string("Ab\0cd", 5));

    const std::string longText(255, 'a');
    EXPECT_EQ(OrvStr::CompareStrings("abc", "abd"), -1);
    EXPECT_EQ(OrvStr::CompareStrings("b", "abd"), 1);
    EXPECT_EQ(OrvStr::CompareStrings((longText + "a").c_str(), (longText + "b").c_str()), 0);
}

}  // namespace
