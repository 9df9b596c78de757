#include "support/OrvStr.h"

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

TEST_F(OrvStrTest, ReplacingEndsAtAMatchThatMeetsTheInsertion) {
    EXPECT_EQ(replaced("a-b-c", "-", "+++"), Replaced(2, "a+++b+++c"));
    EXPECT_EQ(replaced("x&y&z", "&", "&amp;"), Replaced(1, "x&amp;y&z"));
    EXPECT_EQ(replaced("aa", "a", "a"), Replaced(1, "aa"));
    EXPECT_EQ(replaced("aababbab", "ab", ""), Replaced(2, "abab"));
    EXPECT_EQ(replaced("plain", "", "x"), Replaced(0, "plain"));
}

TEST_F(OrvStrTest, ReplacingMayIgnoreCase) {
    EXPECT_EQ(replaced("Say ABC", "abc", "-"), Replaced(0, "Say ABC"));
    EXPECT_EQ(replaced("Say abc, Abc!", "ABC", "Xyz", true), Replaced(2, "Say Xyz, Xyz!"));
    // The inserted text is compared as it stands: "B" is no match for the lower-cased pattern.
    EXPECT_EQ(replaced("b-b", "b", "B", true), Replaced(2, "B-B"));
}

TEST_F(OrvStrTest, OnlyTextInAnotherEncodingIsConverted) {
    const std::string ascii(3000, 'a'), accented = "T\xC5\xABpuna" + ascii;
    const auto macRoman = [](const std::string& text) {
        return OrvStr::GetCStrFromCFStr(text, kCFStringEncodingMacRoman);
    };
    EXPECT_EQ(macRoman(ascii), ascii.c_str());
    EXPECT_EQ(OrvStr::GetCStrFromCFStr(accented, kCFStringEncodingUTF8), accented.c_str());
    // Wherever the accent stands among the bytes that are looked at together.
    EXPECT_STREQ(macRoman("aaaaaaaa\xC3\xA9"), "aaaaaaaa\x8E");
    EXPECT_STREQ(macRoman("\xC3\xA9llo llo"), "\x8Ello llo");
    EXPECT_EQ(macRoman(repeated("\xC3\xA9", 1023)), std::string(1023, '\x8E'));
    for (const std::string& text : {repeated("\xC3\xA9", 1024), accented, std::string("\xFF")})
        EXPECT_EQ(macRoman(text), nullptr) << text;
}

TEST_F(OrvStrTest, ACopyIsAlwaysTerminated) {
    char buffer[] = "........";
    for (const char* text : {"a", "abcdef"}) EXPECT_EQ(OrvStr::strncpy(buffer, text, 4), buffer);
    OrvStr::strncpy(buffer, "xyz", 0);
    EXPECT_EQ(std::string(buffer, 5), std::string("abc\0.", 5));
}

TEST_F(OrvStrTest, ASuffixIsAppendedOnlyWhereItIsMissing) {
    char name[64] = "page";
    for (const bool checkOnly : {true, false})
        EXPECT_TRUE(OrvStr::CheckAppendSuffix(name, "html", checkOnly));
    EXPECT_FALSE(OrvStr::CheckAppendSuffix(name, "html", false));
    EXPECT_TRUE(OrvStr::CheckAppendSuffix(name, "HTML", false));
    EXPECT_STREQ(name, "page.html.HTML");
}

TEST_F(OrvStrTest, ALongLineIsCutWithAWarning) {
    const TemporaryFolder forTheLog;
    std::ofstream("lines") << "one\r\ntwo\nabcdefg\nend";
    std::FILE* const file = std::fopen("lines", "r");
    char buffer[] = "......";
    for (const char* line : {"one", "", "two", "abc", "efg", "end", ""}) {
        EXPECT_EQ(OrvStr::fgetline(buffer, 4, file), buffer);
        EXPECT_STREQ(buffer, line);
        EXPECT_EQ(buffer[5], '.');
    }
    std::fclose(file);
    ASSERT_EQ(standins::desktop.alerts.size(), 1u);
    EXPECT_THAT(standins::desktop.alerts[0].explanation,
                testing::EndsWith(" Error Code:  4\n Message   :  Line too long\n\n"));
}

TEST_F(OrvStrTest, BytesBecomeHexadecimalDigitsAndComeBack) {
    char digits[64], bytes[] = "1234567";
    EXPECT_EQ(OrvStr::HexChar_Encode(digits, "Az\n\x80"), 4);
    EXPECT_STREQ(digits, "417A AFFFFFF80");
    EXPECT_EQ(OrvStr::HexChar_Decode("417A a8", bytes), 3);
    EXPECT_STREQ(bytes, "Az\n");
    EXPECT_EQ(OrvStr::HexChar_Decode("zz4", bytes), 1);
    EXPECT_EQ(std::string(bytes, 3), std::string("\0\0\n", 3));
}

TEST_F(OrvStrTest, TextBecomesAsMuchUTF16AsFits) {
    std::u16string out = u"....";
    char* const bytes = reinterpret_cast<char*>(out.data());
    int length = 0;
    OrvStr::CStr2UniChar("T\xC5\xAB", bytes, 8, length);
    EXPECT_EQ(length, 2);
    EXPECT_EQ(out, std::u16string(u"T\u016B\0.", 4));
    OrvStr::CStr2UniChar("abcdef", bytes, 5, length);
    EXPECT_EQ(length, 6);
    EXPECT_EQ(out, std::u16string(u"ab\0.", 4));
    const TemporaryFolder forTheLog;
    EXPECT_EXIT(OrvStr::CStr2UniChar("\xFF", bytes, 8, length), testing::ExitedWithCode(0), "");
}

TEST_F(OrvStrTest, MacRomanTextBecomesAFileName) {
    HFSUniStr255 name;
    EXPECT_TRUE(OrvStr::CStr2HFSUniStr((std::string(254, 'n') + "\x8E").c_str(), name));
    EXPECT_EQ(name.length, 255);
    EXPECT_EQ(name.unicode[254], u'\u00E9');
    EXPECT_FALSE(OrvStr::CStr2HFSUniStr(std::string(256, 'n').c_str(), name));
}

TEST_F(OrvStrTest, ListEntriesAreTextsAndFormats) {
    char text[64];
    EXPECT_EQ(OrvStr::ResStrSprintf(text, 128, 1, "three", 4), 10);
    EXPECT_STREQ(text, "three of 4");
    EXPECT_EQ(std::strlen(OrvStr::GetCStrFromList(128, 2)), 511u);
    EXPECT_EQ(PascalText(OrvStr::GetPStrFromList(128, 2)).size(), 255u);
}

TEST_F(OrvStrTest, CharactersAreFoundWhereverTheyStand) {
    char text[] = "a-b-c";
    EXPECT_EQ(OrvStr::CountCharOccurance(text, '-'), 2);
    OrvStr::ReplaceChars(text, '-', '+');
    OrvStr::strupr(text);
    EXPECT_STREQ(text, "A+B+C");
    std::string words = " \t\n o'NEILL-smith,JR.aT the sEA ";
    OrvStr::CorrectCase(words);
    OrvStr::ClearLeadingWhitespace(words);
    EXPECT_EQ(words, "O'Neill-Smith,Jr.At The Sea ");
    std::string withZero("aB\0Cd", 5);
    OrvStr::CorrectCase(withZero);
    EXPECT_EQ(withZero, std::string("Ab\0cd", 5));
}

TEST_F(OrvStrTest, TextsAreComparedUpTo255Bytes) {
    const std::string longText(255, 'a');
    EXPECT_EQ(OrvStr::CompareStrings("abc", "abd"), -1);
    EXPECT_EQ(OrvStr::CompareStrings("b", "abd"), 1);
    EXPECT_EQ(OrvStr::CompareStrings((longText + "a").c_str(), (longText + "b").c_str()), 0);
}

}  // namespace
