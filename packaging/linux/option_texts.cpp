// Fills the options into the template of the man page or of the shell completion:
//
//     option_texts TEMPLATE RESULT

#include <cctype>
#include <cstdio>
#include <fstream>
#include <iterator>
#include <string>
#include <string_view>

#include "program/OptionTable.h"

namespace {

bool takesFile(const OptionEntry& entry) {
    return entry.valueName && std::string_view(entry.valueName).starts_with("FILE");
}

bool takesOtherValue(const OptionEntry& entry) {
    return entry.valueName && !takesFile(entry) && !takesOptionalValue(entry);
}

std::string optionNames(bool (*isWanted)(const OptionEntry&), const char* separator) {
    std::string names;
    for (const OptionEntry& entry : optionTable())
        if (isWanted(entry)) names += std::string(names.empty() ? "" : separator) + "--" + entry.name;
    return names;
}

// A bare "-" may be rendered as a typographic hyphen, which does not work in a command line.
std::string roff(std::string_view text) {
    std::string result;
    for (const char c : text) result += c == '-' ? "\\-" : std::string(1, c);
    return result;
}

std::string sentence(std::string text) {
    text[0] = static_cast<char>(std::toupper(static_cast<unsigned char>(text[0])));
    return text + ".";
}

std::string manEntry(const OptionEntry& entry) {
    const std::string name = roff(std::string("--") + entry.name);
    const std::string head = entry.valueName ? ".BI " + name + " \" " + entry.valueName + "\"" : ".B " + name;
    return ".TP\n" + head + "\n" + roff(entry.man ? entry.man : sentence(entry.help)) + "\n";
}

std::string manOptions() {
    std::string text;
    std::string_view group;
    for (const OptionEntry& entry : optionTable()) {
        if (group != entry.group) text += std::string(".SS ") + entry.group + "\n";
        group = entry.group;
        text += manEntry(entry);
    }
    text.pop_back();  // the template ends the last line
    return text;
}

void fill(std::string& text, std::string_view mark, const std::string& value) {
    const auto at = text.find(mark);
    if (at != std::string::npos) text.replace(at, mark.size(), value);
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 3) {
        std::fputs("Usage: option_texts TEMPLATE RESULT\n", stderr);
        return 2;
    }
    std::ifstream source(argv[1]);
    std::string text{std::istreambuf_iterator<char>(source), {}};
    fill(text, "@VERSION@", TELLMAR_VERSION);
    fill(text, "@MAN_OPTIONS@", manOptions());
    fill(text, "@FILE_OPTIONS@", optionNames(takesFile, " | "));
    fill(text, "@VALUE_OPTIONS@", optionNames(takesOtherValue, " | "));
    fill(text, "@OPTIONS@", optionNames([](const OptionEntry&) { return true; }, " "));

    std::ofstream result(argv[2]);
    result << text;
    result.close();
    if (source.good() && result.good()) return 0;
    std::fprintf(stderr, "option_texts: cannot write %s from %s\n", argv[2], argv[1]);
    return 1;
}
