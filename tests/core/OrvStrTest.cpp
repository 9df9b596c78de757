#include "support/OrvStr.h"

#include <gmock/gmock.h>

#include <array>
#include <cstring>
#include <memory>

#include "support/HFSUniStr255.h"
#include "support/PascalString.h"
#include "tests/TemporaryFolder.h"
#include "tests/standins/Alert.h"

namespace {

struct Replaced {
    int count;
    std::string text;

    bool operator==(const Replaced&) const = default;
};

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

// A stream that reads the given text.
std::unique_ptr<std::FILE, int (*)(std::FILE*)> reading(const std::string& text) {
    std::FILE* file = std::tmpfile();
    std::fwrite(text.data(), 1, text.size(), file);
    std::rewind(file);
    return {file, &std::fclose};
}

TEST(OrvStrTest, ReplacingGoesOnBehindWhatItInserted) {
    EXPECT_EQ(replaced("x>y>z", ">", "&gt;"), (Replaced{2, "x&gt;y&gt;z"}));
    EXPECT_EQ(replaced("x&y&z", "&", "&amp;"), (Replaced{1, "x&amp;y&z"}));
    EXPECT_EQ(replaced("plain", ">", "&gt;"), (Replaced{0, "plain"}));
    EXPECT_EQ(replaced("plain", "", "x"), (Replaced{0, "plain"}));
    EXPECT_EQ(replaced("aXbXc", "X", ""), (Replaced{2, "abc"}));
    EXPECT_EQ(OrvStr::ReplaceStrings(nullptr, "a", "b", false), 0);
}

TEST(OrvStrTest, ReplacingWithoutRegardToCaseKeepsTheRest) {
    EXPECT_EQ(replaced("Say ABC, Abc!", "abc", "Xyz", true), (Replaced{2, "Say Xyz, Xyz!"}));
    EXPECT_EQ(replaced("Say abc", "ABC", "-", true), (Replaced{1, "Say -"}));
    EXPECT_EQ(replaced("Say ABC", "abc", "-", false), (Replaced{0, "Say ABC"}));
    // The inserted text is compared as it stands: "B" is no match for the lower-cased pattern.
    EXPECT_EQ(replaced("b-b", "b", "B", true), (Replaced{2, "B-B"}));
}

TEST(OrvStrTest, ReplacingOnceOverTheTextEqualsSearchingFromItsStart) {
    const char* const patterns[] = {"a", "b", "aa", "ab", "aba", "abab"};
    const char* const replacements[] = {"", "a", "b", "ab", "ba", "bab", "aab"};
    int compared = 0;
    for (int length = 0; length <= 10; ++length) {
        for (int bits = 0; bits < (1 << length); ++bits) {
            std::string text(length, 'a');
            for (int i = 0; i < length; ++i) text[i] = (bits >> i & 1) ? 'b' : 'a';
            for (const char* find : patterns) {
                for (const char* replace : replacements) {
                    ASSERT_EQ(replaced(text, find, replace), replacedByTheRule(text, find, replace))
                        << text << " " << find << " " << replace;
                    ++compared;
                }
            }
        }
    }
    EXPECT_EQ(compared, 2047 * 6 * 7);
}

TEST(OrvStrTest, TextAlreadyInTheEncodingIsItsOwnStorage) {
    const std::string ascii(3000, 'a');
    const std::string accented = "T\xC5\xABpuna" + ascii;
    EXPECT_EQ(OrvStr::GetCStrFromCFStr(ascii, kCFStringEncodingMacRoman), ascii.c_str());
    EXPECT_EQ(OrvStr::GetCStrFromCFStr(accented, kCFStringEncodingUTF8), accented.c_str());
}

TEST(OrvStrTest, OtherTextIsConvertedIntoABuffer) {
    std::string text;
    for (int i = 0; i < 1023; ++i) text += "\xC3\xA9";
    EXPECT_STREQ(OrvStr::GetCStrFromCFStr("aaaaaaaa\xC3\xA9", kCFStringEncodingMacRoman), "aaaaaaaa\x8E");
    EXPECT_EQ(OrvStr::GetCStrFromCFStr(text, kCFStringEncodingMacRoman), std::string(1023, '\x8E'));
    EXPECT_EQ(OrvStr::GetCStrFromCFStr(text + "\xC3\xA9", kCFStringEncodingMacRoman), nullptr);
    EXPECT_EQ(OrvStr::GetCStrFromCFStr("T\xC5\xABpuna", kCFStringEncodingMacRoman), nullptr);
    EXPECT_EQ(OrvStr::GetCStrFromCFStr("\xFF", kCFStringEncodingMacRoman), nullptr);
    EXPECT_EQ(OrvStr::GetCStrFromCFStr("text", 0x7777), nullptr);
}

TEST(OrvStrTest, CopyingIsAlwaysTerminated) {
    char buffer[] = "........";
    EXPECT_EQ(OrvStr::strncpy(buffer, "abcdef", 4), buffer);
    EXPECT_EQ(std::string(buffer, 8), std::string("abc\0....", 8));
    OrvStr::strncpy(buffer, "a", 4);
    EXPECT_EQ(std::string(buffer, 5), std::string("a\0\0\0.", 5));
    OrvStr::strncpy(buffer, "xyz", 0);
    EXPECT_STREQ(buffer, "a");
}

TEST(OrvStrTest, ASuffixIsAppendedOnlyWhereItIsMissing) {
    char name[64] = "page";
    EXPECT_TRUE(OrvStr::CheckAppendSuffix(name, "html", true));
    EXPECT_STREQ(name, "page");
    EXPECT_TRUE(OrvStr::CheckAppendSuffix(name, "html", false));
    EXPECT_STREQ(name, "page.html");
    EXPECT_FALSE(OrvStr::CheckAppendSuffix(name, "html", false));
    EXPECT_TRUE(OrvStr::CheckAppendSuffix(name, "HTML", false));
    EXPECT_STREQ(name, "page.html.HTML");
}

TEST(OrvStrTest, ALineEndsAtEitherLineEnd) {
    const auto file = reading("one\r\ntwo\n\nlast");
    char buffer[17];
    for (const char* line : {"one", "", "two", "", "last", ""}) {
        EXPECT_EQ(OrvStr::fgetline(buffer, 16, file.get()), buffer);
        EXPECT_STREQ(buffer, line);
    }
    EXPECT_EQ(OrvStr::fgetline(buffer, 16, nullptr), nullptr);
}

TEST(OrvStrTest, ALongLineIsCutWithAWarning) {
    const TemporaryFolder forTheLog;
    standins::resetAlerts();
    const auto file = reading("abcdefg\n");
    char buffer[] = "......";
    OrvStr::fgetline(buffer, 4, file.get());
    EXPECT_EQ(std::string(buffer, 6), std::string("abc\0\0.", 6));
    ASSERT_EQ(standins::alertRecord().alerts.size(), 1u);
    EXPECT_EQ(standins::alertRecord().alerts[0].text, "OrvStr::fgetline()");
    EXPECT_THAT(standins::alertRecord().alerts[0].explanation,
                testing::EndsWith(" Error Code:  4\n Message   :  Line too long\n\n"));
    EXPECT_STREQ(OrvStr::fgetline(buffer, 4, file.get()), "efg");
}

TEST(OrvStrTest, BytesBecomeHexadecimalDigitsAndComeBack) {
    char digits[64];
    EXPECT_EQ(OrvStr::HexChar_Encode(digits, "Az\n\x80"), 4);
    EXPECT_STREQ(digits, "417A AFFFFFF80");
    char bytes[8];
    EXPECT_EQ(OrvStr::HexChar_Decode("417A a8", bytes), 3);
    EXPECT_STREQ(bytes, "Az\n");
    EXPECT_EQ(OrvStr::HexChar_Decode("41zz42", bytes), 3);
    EXPECT_EQ(std::string(bytes, 4), std::string("A\0B\0", 4));
    EXPECT_EQ(OrvStr::HexChar_Decode("", bytes), 0);
    EXPECT_STREQ(bytes, "");
}

TEST(OrvStrTest, TextBecomesUTF16) {
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
}

TEST(OrvStrDeathTest, TextThatIsNotUTF8EndsTheProcess) {
    const TemporaryFolder forTheLog;
    char out[8];
    int length = 0;
    EXPECT_EXIT(OrvStr::CStr2UniChar("\xFF", out, sizeof out, length), testing::ExitedWithCode(0), "");
}

TEST(OrvStrTest, MacRomanTextBecomesAFileName) {
    HFSUniStr255 name;
    EXPECT_TRUE(OrvStr::CStr2HFSUniStr("Caf\x8E", name));
    EXPECT_EQ(name.length, 4);
    EXPECT_EQ(name.unicode[3], u'\u00E9');
    EXPECT_TRUE(OrvStr::CStr2HFSUniStr(std::string(255, 'n').c_str(), name));
    EXPECT_EQ(name.length, 255);
    EXPECT_FALSE(OrvStr::CStr2HFSUniStr(std::string(256, 'n').c_str(), name));
    EXPECT_FALSE(OrvStr::CStr2HFSUniStr(nullptr, name));
}

TEST(OrvStrTest, ListEntriesAreTextsAndFormats) {
    char text[64];
    EXPECT_EQ(OrvStr::ResStrSprintf(text, 128, 1, "three", 4), 10);
    EXPECT_STREQ(text, "three of 4");
    EXPECT_STREQ(OrvStr::GetCStrFromList(128, 1), "%s of %d");
    EXPECT_EQ(std::strlen(OrvStr::GetCStrFromList(128, 2)), 511u);
    EXPECT_STREQ(OrvStr::GetCStrFromList(128, 3), "");
    EXPECT_EQ(PascalText(OrvStr::GetPStrFromList(128, 1)), "%s of %d");
    EXPECT_EQ(OrvStr::GetPStrFromList(128, 2)[0], 255);
}

TEST(OrvStrTest, CharactersAreCountedChangedAndCompared) {
    char text[] = "a-b-c";
    EXPECT_EQ(OrvStr::CountCharOccurance(text, '-'), 2);
    OrvStr::ReplaceChars(text, '-', '-');
    OrvStr::ReplaceChars(text, '-', '+');
    EXPECT_STREQ(text, "a+b+c");
    OrvStr::strupr(text);
    EXPECT_STREQ(text, "A+B+C");
    OrvStr::strlwr(text);
    EXPECT_STREQ(text, "a+b+c");
    EXPECT_EQ(OrvStr::CompareStrings("abc", "abd"), -1);
    EXPECT_EQ(OrvStr::CompareStrings("b", "abd"), 1);
    EXPECT_EQ(OrvStr::CompareStrings("abc", "abc"), 0);
    // Only what fits a Pascal string counts.
    const std::string longText(255, 'a');
    EXPECT_EQ(OrvStr::CompareStrings((longText + "a").c_str(), (longText + "b").c_str()), 0);
}

TEST(OrvStrTest, TextIsTrimmedAndCapitalised) {
    std::string text = " \t\n lower HUTT  ";
    OrvStr::ClearLeadingWhitespace(text);
    EXPECT_EQ(text, "lower HUTT  ");
    for (const char* blank : {"", " \t "}) {
        text = blank;
        OrvStr::ClearLeadingWhitespace(text);
        EXPECT_EQ(text, "");
    }
    text = "o'NEILL-smith,JR.aT the sEA";
    OrvStr::CorrectCase(text);
    EXPECT_EQ(text, "O'Neill-Smith,Jr.At The Sea");
}

}  // namespace
