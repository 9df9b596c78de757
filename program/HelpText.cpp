#include "program/HelpText.h"

#include <string_view>

#include "program/OptionTable.h"

namespace {

constexpr std::size_t kHelpColumn = 21;

constexpr char kIntroduction[] = R"(Usage: tellmar [OPTION]...
Shows the latest strong earthquakes of the New Zealand region, each on a map.
Without options it runs in a window of 1280 x 720.
)";

constexpr char kEnding[] = R"(
In a window of its own, Escape or q quits.
)";

std::string nameColumn(const OptionEntry& entry) {
    std::string column = std::string("  --") + entry.name;
    if (entry.valueName) column += std::string(" ") + entry.valueName;
    column.resize(kHelpColumn, ' ');
    return column;
}

std::string indented(std::string_view text) {
    std::string result;
    for (const char c : text) {
        result += c;
        if (c == '\n') result.append(kHelpColumn, ' ');
    }
    return result;
}

}  // namespace

std::string helpText() {
    std::string text = kIntroduction;
    std::string_view group;
    for (const OptionEntry& entry : optionTable()) {
        if (group != entry.group) text += std::string("\n") + entry.group + ":\n";
        group = entry.group;
        text += nameColumn(entry) + indented(entry.help) + "\n";
    }
    return text + kEnding;
}
