#include "program/XScreenSaverFile.h"

#include "tests/fuzz/Fuzz.h"

namespace {

using Place = XScreenSaverFile::Place;

std::string without(const std::string& text) {
    XScreenSaverFile file(text);
    file.remove();
    REQUIRE(file.place() == Place::None);
    return file.text();
}

// Whether only bytes taken out of longer make the text.
bool isPartOf(std::string_view text, std::string_view longer) {
    std::size_t found = 0;
    for (const char byte : longer) found += found < text.size() && text[found] == byte;
    return found == text.size();
}

// Whether longer is the text with something inserted in one place.
bool isInsertion(std::string_view text, std::string_view longer) {
    const auto same = static_cast<std::size_t>(std::ranges::mismatch(text, longer).in1 - text.begin());
    return longer.size() > text.size() && longer.ends_with(text.substr(same));
}

}  // namespace

// Adding inserts our line in one place. Removing leaves every other byte in its order, but for a separator.
void fuzz(std::string_view input) {
    const std::string cleared = without(std::string(input));
    REQUIRE(isPartOf(cleared, input) && without(cleared) == cleared);
    XScreenSaverFile file(cleared);
    if (file.hasForeignLineEnds()) return;
    file.add("tellmar --root");
    REQUIRE(file.place() == Place::Listed && !file.hasForeignLineEnds());
    REQUIRE(isInsertion(cleared, file.text()));
    const std::string again = without(file.text());
    REQUIRE(again == cleared || (isInsertion(cleared, again) && again.size() <= cleared.size() + 3));
}
