#include <cstring>

#include "mappages/MapsPageWriter.h"
#include "platform/PrintableText.h"
#include "quakes/CQuakeEvent.h"
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

}  // namespace

void fuzz(std::string_view input) {
    checkPage(input);
    const std::string shown = platform::printable(std::string(input));
    REQUIRE(!hasControls(shown) && platform::printable(shown) == shown);
}
