#include "program/XScreenSaverFile.h"

#include <algorithm>
#include <optional>
#include <string_view>
#include <vector>

#include "support/Text.h"

namespace {

constexpr std::string_view kProgram = "tellmar";
constexpr std::string_view kBlanks = " \t\r\n";

// The file is in the syntax of X resources: a backslash takes the end of its line away, so an entry (or a
// comment) may run over many lines. A list separates its programs by a backslash and an n.
struct Span {
    std::size_t begin, end;
};

std::string_view part(std::string_view text, Span span) {
    return text.substr(span.begin, span.end - span.begin);
}

// Each without the end of its last line.
std::vector<Span> entriesOf(std::string_view text) {
    std::vector<Span> entries;
    std::size_t begin = 0;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] == '\\') {
            ++i;
        } else if (text[i] == '\n') {
            entries.push_back({begin, i});
            begin = i + 1;
        }
    }
    if (begin < text.size()) entries.push_back({begin, text.size()});
    return entries;
}

bool isNamed(std::string_view entry, std::string_view name) {
    const std::string_view key = trimmed(entry.substr(0, entry.find(':')), kBlanks);
    const auto same = [](char a, char b) { return (a >= 'A' && a <= 'Z' ? a + ('a' - 'A') : a) == b; };
    return entry.find(':') != entry.npos &&
           std::equal(key.begin(), key.end(), name.begin(), name.end(), same);
}

// Where a name comes twice, XScreenSaver takes the last.
std::optional<Span> findEntry(std::string_view text, std::string_view name) {
    std::optional<Span> found;
    for (const Span entry : entriesOf(text))
        if (isNamed(part(text, entry), name)) found = entry;
    return found;
}

Span valueOf(std::string_view text, Span entry) { return {text.find(':', entry.begin) + 1, entry.end}; }

// Whether an odd number of backslashes ends the text: the last one escapes what follows.
bool endsInEscape(std::string_view text) {
    const std::size_t words = text.find_last_not_of('\\') + 1;  // 0 where all are backslashes
    return (text.size() - words) % 2 == 1;
}

// Each with its separator; the last may have none, or be nothing but blanks.
std::vector<Span> programsOf(std::string_view text, Span list) {
    std::vector<Span> programs;
    std::size_t begin = list.begin;
    for (std::size_t i = list.begin; i + 1 < list.end; ++i) {
        if (text[i] != '\\') continue;
        if (text[++i] != 'n') continue;
        programs.push_back({begin, i + 1});
        begin = i + 1;
    }
    if (begin < list.end) programs.push_back({begin, list.end});
    return programs;
}

// A program's line as XScreenSaver sees it, without the separator.
std::string joined(std::string_view program) {
    std::string line;
    for (std::size_t i = 0; i < program.size(); ++i) {
        if (program[i] != '\\')
            line += program[i];
        else if (++i < program.size() && program[i] != '\n' && program[i] != 'n')
            line += program[i];
    }
    return std::string(trimmed(line, kBlanks));
}

void skip(std::string_view& line, std::size_t count) {
    line = trimmed(line.substr(std::min(count, line.size())), kBlanks);
}

// The form of a line: [-] [VISUAL:] ["TITLE"] COMMAND; the dash switches it off.
XScreenSaverFile::Place placeIn(std::string_view line) {
    const bool isOff = line.starts_with('-');
    if (isOff) skip(line, 1);
    if (const auto visual = line.substr(0, line.find_first_of(kBlanks)); visual.ends_with(':'))
        skip(line, visual.size());
    if (line.starts_with('"')) skip(line, std::min(line.find('"', 1), line.size() - 1) + 1);

    const std::string_view command = line.substr(0, line.find_first_of(kBlanks));
    const std::string_view name = command.substr(command.rfind('/') + 1);
    if (name != kProgram) return XScreenSaverFile::Place::None;
    return isOff ? XScreenSaverFile::Place::SwitchedOff : XScreenSaverFile::Place::Listed;
}

XScreenSaverFile::Place placeOf(std::string_view text, Span program) {
    return placeIn(joined(part(text, program)));
}

bool isBlank(std::string_view text, Span span) { return joined(part(text, span)).empty(); }

std::vector<Span> listedPrograms(std::string_view text) {
    const auto list = findEntry(text, "programs");
    return list ? programsOf(text, valueOf(text, *list)) : std::vector<Span>();
}

std::vector<Span> withoutBlankEnd(std::string_view text, std::vector<Span> programs) {
    while (!programs.empty() && isBlank(text, programs.back())) programs.pop_back();
    return programs;
}

bool hasSeparator(std::string_view program) {
    return program.ends_with('n') && endsInEscape(program.substr(0, program.size() - 1));
}

// The end of what is neither blank nor the mere continuation of a line.
std::size_t endOfWords(std::string_view text, Span program) {
    std::size_t end = program.end;
    for (bool isOver = false; !isOver && end > program.begin;) {
        const bool isContinuation =
            endsInEscape(text.substr(0, end)) && (end == text.size() || text[end] == '\n');
        isOver = kBlanks.find(text[end - 1]) == kBlanks.npos && !isContinuation;
        if (!isOver) --end;
    }
    return end;
}

// Makes sure that what is added next does not continue the last entry.
void endLastEntry(std::string& text) {
    if (!text.empty() && text.back() != '\n') text += '\n';
    const auto entries = entriesOf(text);
    if (!entries.empty() && entries.back().end == text.size()) text += '\n';
}

// At the end; but in front of a text that ends in a lone CR, which a line feed would turn into a CR LF.
void addEntry(std::string& text, const std::string& entry) {
    if (text.ends_with('\r')) {
        text.insert(0, entry);
        return;
    }
    endLastEntry(text);
    text += entry;
}

}  // namespace

bool XScreenSaverFile::hasForeignLineEnds() const { return mText.find("\r\n") != mText.npos; }

XScreenSaverFile::Place XScreenSaverFile::place() const {
    for (const Span program : listedPrograms(mText))
        if (const Place place = placeOf(mText, program); place != Place::None) return place;
    return Place::None;
}

void XScreenSaverFile::add(const std::string& command) {
    const std::string line = "\\\n\t\t\t\t" + command + "\t\t\t\t    \\n";
    const auto list = findEntry(mText, "programs");
    if (!list) return addEntry(mText, "programs:\t" + line + "\n");
    const auto programs = withoutBlankEnd(mText, listedPrograms(mText));
    if (programs.empty())
        mText.insert(valueOf(mText, *list).begin, "\t" + line);
    else if (hasSeparator(part(mText, programs.back())))
        mText.insert(programs.back().end, line);
    else
        mText.insert(endOfWords(mText, programs.back()), " \\n" + line);
}

void XScreenSaverFile::remove() {
    const auto programs = listedPrograms(mText);
    for (auto program = programs.rbegin(); program != programs.rend(); ++program)
        if (placeOf(mText, *program) != Place::None)
            mText.erase(program->begin, program->end - program->begin);

    const auto list = findEntry(mText, "programs");
    if (!list || !isBlank(mText, valueOf(mText, *list))) return;
    // Without the empty list an earlier one would count.
    if (findEntry(part(mText, {0, list->begin}), "programs")) return;
    mText.erase(list->begin, list->end + 1 - list->begin);
}

bool XScreenSaverFile::addingMovesChoice() const {
    return findEntry(mText, "selected") && listedPrograms(mText).empty();
}

bool XScreenSaverFile::removingMovesChoice() const {
    const auto programs = withoutBlankEnd(mText, listedPrograms(mText));
    return findEntry(mText, "selected") && !programs.empty() &&
           placeOf(mText, programs.back()) == Place::None;
}
