#include "platform/linux/system/AnswerCache.h"

#include <glib.h>

#include <algorithm>
#include <charconv>
#include <filesystem>
#include <memory>
#include <string_view>
#include <vector>

#include "platform/Files.h"

namespace platform {

namespace {

namespace fs = std::filesystem;

constexpr char kPrefix[] = "answer-";
// In the file's name and in its first line: versions that keep answers in another way use other files.
constexpr char kVersion[] = "1";
constexpr char kFirstLine[] = "Tellmar answer 1\n";
constexpr std::size_t kMostFiles = 4;
constexpr std::size_t kMostDocumentBytes = 4 << 20;
constexpr std::size_t kMostFileBytes = kMostDocumentBytes + (64 << 10);

std::string sha256(std::string_view text) {
    const std::unique_ptr<char, decltype(&g_free)> sum(
        g_compute_checksum_for_data(G_CHECKSUM_SHA256, reinterpret_cast<const guchar*>(text.data()),
                                    text.size()),
        &g_free);
    return sum.get();
}

std::string asLine(std::string text) {
    std::replace_if(
        text.begin(), text.end(), [](char character) { return character == '\n' || character == '\r'; }, ' ');
    return text + "\n";
}

// Takes the text up to the next end of line off the front.
std::string takeLine(std::string_view& text) {
    const std::size_t end = std::min(text.find('\n'), text.size());
    const std::string line(text.substr(0, end));
    text.remove_prefix(std::min(end + 1, text.size()));
    return line;
}

// First line, sum of the rest, five lines, document.
std::string write(const KeptAnswer& answer) {
    const std::string rest = asLine(answer.service) + asLine(answer.url) +
                             asLine(std::to_string(answer.time)) + asLine(answer.validators.etag) +
                             asLine(answer.validators.lastModified) + answer.document;
    return kFirstLine + sha256(rest) + "\n" + rest;
}

std::optional<KeptAnswer> parse(std::string_view text) {
    if (!text.starts_with(kFirstLine)) return std::nullopt;
    text.remove_prefix(std::string_view(kFirstLine).size());
    const std::string sum = takeLine(text);
    if (sum != sha256(text)) return std::nullopt;
    KeptAnswer answer;
    answer.service = takeLine(text);
    answer.url = takeLine(text);
    const std::string time = takeLine(text);
    std::from_chars(time.data(), time.data() + time.size(), answer.time);
    answer.validators.etag = takeLine(text);
    answer.validators.lastModified = takeLine(text);
    answer.document = text;
    return answer;
}

std::optional<KeptAnswer> readAnswer(const fs::path& path) {
    std::error_code error;
    if (!fs::is_regular_file(path, error) || fs::file_size(path, error) > kMostFileBytes) return std::nullopt;
    std::string text;
    if (!readFile(path, text)) return std::nullopt;
    return parse(text);
}

std::vector<fs::path> answerFiles(const std::string& folder) {
    std::vector<fs::path> files;
    std::error_code error;
    for (auto entry = fs::directory_iterator(folder, error); !error && entry != fs::directory_iterator();
         entry.increment(error))
        if (entry->path().filename().string().starts_with(kPrefix)) files.push_back(entry->path());
    return files;
}

}  // namespace

std::string AnswerCache::userFolder() {
    const char* const cache = g_getenv("XDG_CACHE_HOME");
    const bool isNamed = cache && g_path_is_absolute(cache);
    return (isNamed ? std::string(cache) : std::string(g_get_home_dir()) + "/.cache") + "/tellmar";
}

std::string AnswerCache::pathFor(const std::string& url) const {
    return mFolder + "/" + kPrefix + kVersion + "-" + sha256(url).substr(0, 16);
}

std::optional<KeptAnswer> AnswerCache::find(const std::string& url) const {
    auto answer = readAnswer(pathFor(url));
    return answer && answer->url == url ? answer : std::nullopt;
}

std::optional<KeptAnswer> AnswerCache::newest(const std::string& service) const {
    std::optional<KeptAnswer> newest;
    for (const fs::path& path : answerFiles(mFolder)) {
        auto answer = readAnswer(path);
        if (!answer || answer->service != service) continue;
        if (!newest || answer->time > newest->time) newest = std::move(answer);
    }
    return newest;
}

bool AnswerCache::store(const KeptAnswer& answer) const {
    if (answer.document.size() > kMostDocumentBytes) return false;
    if (!makePrivateFolder(mFolder)) return false;
    const bool isStored = writeFileAtomically(pathFor(answer.url), write(answer));
    removeOldest();
    return isStored;
}

// Drafts of a process that was killed while it wrote are among them.
void AnswerCache::removeOldest() const {
    std::vector<fs::path> files = answerFiles(mFolder);
    if (files.size() <= kMostFiles) return;
    const auto age = [](const fs::path& path) {
        std::error_code error;
        return fs::last_write_time(path, error);
    };
    std::sort(files.begin(), files.end(), [&](const auto& a, const auto& b) { return age(a) > age(b); });
    std::error_code error;
    for (std::size_t i = kMostFiles; i < files.size(); ++i) fs::remove(files[i], error);
}

}  // namespace platform
