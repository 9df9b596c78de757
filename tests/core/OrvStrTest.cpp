#include "support/OrvStr.h"

#include <cstring>
#include <fstream>

#include "support/HFSUniStr255.h"
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
    EXPECT_EQ(replaced("aababbab", "ab", ""), Replaced(2, "abab"));
    EXPECT_EQ(replaced("x&y&z", "&", "&amp;"), Replaced(1, "x&amp;y&z"));
    EXPECT_EQ(replaced("Say abc, Abc!", "ABC", "Xyz", true), Replaced(2, "Say Xyz, Xyz!"));
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

TEST_F(OrvStrTest, OddFormsAreKept) {
    char digits[64], bytes[] = "1234567";
    EXPECT_EQ(OrvStr::HexChar_Encode(digits, "Az\n\x80"), 4);
    EXPECT_STREQ(digits, "417A AFFFFFF80");
    EXPECT_EQ(OrvStr::HexChar_Decode("zzaA4", bytes), 2);
    EXPECT_EQ(std::string(bytes, 4), std::string("\0\xAA\0004", 4));

    std::string words = " o'NEILL-smith,JR.aT the sEA ";
    OrvStr::CorrectCase(words);
    EXPECT_EQ(words, " O'Neill-Smith,Jr.At The Sea ");
    EXPECT_EQ(OrvStr::CompareStrings((std::string(255, 'a') + "b").c_str(), std::string(256, 'a').c_str()),
              0);
    char name[64] = "page.HTML";
    for (const bool checkOnly : {true, false})
        EXPECT_TRUE(OrvStr::CheckAppendSuffix(name, "html", checkOnly));
    EXPECT_FALSE(OrvStr::CheckAppendSuffix(name, "html", false));
    OrvStr::ReplaceChars(name, '.', '+');
    EXPECT_EQ(OrvStr::CountCharOccurance(name, '+'), 2);
    OrvStr::strupr(name);
    EXPECT_STREQ(name, "PAGE+HTML+HTML");
    std::string withZero("aB\0Cd", 5);
    OrvStr::CorrectCase(withZero);
    EXPECT_EQ(withZero, std::string("Ab\0cd", 5));
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

}  // namespace
