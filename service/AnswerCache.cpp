#include "service/AnswerCache.h"

#include <algorithm>
#include <charconv>
#include <filesystem>
#include <string_view>
#include <vector>

#include "platform/Checksum.h"
#include "platform/Files.h"

namespace {

namespace fs = std::filesystem;

constexpr char kPrefix[] = "answer-";
// In the file's name and its first line: versions that keep answers in another way use other files.
constexpr char kVersion[] = "2";
constexpr char kFirstLine[] = "Tellmar answer 2\n";
constexpr std::size_t kMaxFiles = 4;
constexpr std::size_t kMaxDocumentBytes = 4 << 20;
constexpr std::size_t kMaxFileBytes = kMaxDocumentBytes + (64 << 10);

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

// First line, checksum of the rest, five lines, document.
std::string write(const KeptAnswer& answer) {
    const std::string rest = asLine(answer.service) + asLine(answer.url) +
                             asLine(std::to_string(answer.time)) + asLine(answer.validators.etag) +
                             asLine(answer.validators.lastModified) + answer.document;
    return kFirstLine + platform::sha256(rest) + "\n" + rest;
}

std::optional<KeptAnswer> parse(std::string_view text) {
    if (!text.starts_with(kFirstLine)) return std::nullopt;
    text.remove_prefix(std::string_view(kFirstLine).size());
    const std::string sum = takeLine(text);
    if (sum != platform::sha256(text)) return std::nullopt;
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
    if (!fs::is_regular_file(path, error) || fs::file_size(path, error) > kMaxFileBytes) return std::nullopt;
    std::string text;
    if (!platform::readPrivateFile(path, text)) return std::nullopt;
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

std::string AnswerCache::userFolder() { return platform::userCacheDirectory() + "/tellmar"; }

std::string AnswerCache::pathFor(const std::string& url) const {
    return mFolder + "/" + kPrefix + kVersion + "-" + platform::sha256(url).substr(0, 16);
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
    if (answer.document.size() > kMaxDocumentBytes) return false;
    if (!platform::makePrivateFolder(mFolder)) return false;
    if (!platform::writePrivateFile(pathFor(answer.url), write(answer))) return false;
    removeOldest();
    return true;
}

// Drafts of a process that was killed while it wrote are among them.
void AnswerCache::removeOldest() const {
    std::vector<fs::path> files = answerFiles(mFolder);
    if (files.size() <= kMaxFiles) return;
    const auto age = [](const fs::path& path) {
        std::error_code error;
        return fs::last_write_time(path, error);
    };
    std::sort(files.begin(), files.end(), [&](const auto& a, const auto& b) { return age(a) > age(b); });
    std::error_code error;
    for (std::size_t i = kMaxFiles; i < files.size(); ++i) fs::remove(files[i], error);
}
