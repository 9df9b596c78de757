#include <cstring>

#include "mappages/MapsPageWriter.h"
#include "platform/PrintableText.h"
#include "quakes/CQuakeEvent.h"
#include "support/OrvStr.h"
#include "tests/fuzz/Fuzz.h"

namespace {

// Nothing in a quake ends the attribute or the strings in it. The input is numbers and a time.
void checkPage(std::string_view input) {
    double numbers[6] = {};
    std::memcpy(numbers, input.data(), std::min(sizeof numbers, input.size()));
    const std::string time(input.substr(std::min(sizeof numbers, input.size())).substr(0, 255));
    const CQuakeEvent quake(time.c_str(), numbers[0], numbers[1], numbers[2], numbers[3]);
    const std::string page = MapsPageWriter().insertMapsFunctionCall("onload=\"\"|id=\"map_canvas\">", quake,
                                                                     {numbers[4], numbers[5]});
    REQUIRE(page.starts_with("onload=\"initializeMap(") && page.ends_with("px\">"));
    REQUIRE(std::ranges::count(page, '"') == 6 && std::ranges::count(page, '\'') == 4);
    REQUIRE(page.find_first_of("<&\\") == page.npos && !hasControls(page));
}

// The plain rule: search again from the start, until a match begins before the end of what was just inserted.
std::string replaced(std::string text, const std::string& find, const std::string& replace) {
    std::size_t end = 0;
    for (std::size_t at = text.find(find); at != text.npos && at >= end; at = text.find(find)) {
        text.replace(at, find.size(), replace);
        end = at + replace.size();
    }
    return text;
}

// The input is what to find, what to put there, and the text; a line each.
void checkReplacing(std::string_view input) {
    input = input.substr(0, input.find('\0'));
    const std::string find = takeLine(input), replace = takeLine(input), text(input);
    std::string buffer(text.size() * (replace.size() + 1) + 1, '\0');
    std::strcpy(buffer.data(), text.c_str());
    OrvStr::ReplaceStrings(buffer.data(), find.c_str(), replace.c_str(), false);
    REQUIRE(buffer.c_str() == (find.empty() ? text : replaced(text, find, replace)));
}

}  // namespace

void fuzz(std::string_view input) {
    checkPage(input);
    checkReplacing(input);
    const std::string shown = platform::printable(std::string(input));
    REQUIRE(!hasControls(shown) && platform::printable(shown) == shown);
}
