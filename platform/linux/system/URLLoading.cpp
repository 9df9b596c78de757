#include "platform/URLLoading.h"

#include <glib.h>

#include <filesystem>
#include <memory>
#include <string_view>

#include "platform/Files.h"
#include "platform/linux/system/EventService.h"
#include "platform/linux/system/FeedSubstitute.h"
#include "platform/linux/system/HttpTransfer.h"
#include "platform/linux/system/LoadOutcome.h"
#include "platform/linux/system/Trace.h"
#include "service/EventAnswer.h"
#include "service/EventQuery.h"

namespace platform {

namespace {

using CharPointer = std::unique_ptr<char, decltype(&g_free)>;

std::string toString(char* owned) {
    const CharPointer text(owned, &g_free);
    return text ? text.get() : "";
}

bool isWeb(const std::string& url) {
    const char* const scheme = g_uri_peek_scheme(url.c_str());
    return scheme && (std::string_view(scheme) == "http" || std::string_view(scheme) == "https");
}

LoadOutcome fetchFromWeb(const std::string& url, std::string& data) {
    HttpTransfer transfer(url);
    const int error = transfer.run();
    data = std::move(transfer.body());
    return {error, transfer.failure(), {}};
}

// Only regular files: reading a pipe could wait for ever.
LoadOutcome fetchFile(const std::string& path, std::string& data) {
    std::error_code error;
    if (!std::filesystem::is_regular_file(path, error))
        return {CURLE_FILE_COULDNT_READ_FILE, "no such file", {}};
    if (std::filesystem::file_size(path, error) > static_cast<std::uintmax_t>(kMaxResourceBytes))
        return {CURLE_FILESIZE_EXCEEDED, "too large", {}};
    if (!readFile(path, data)) return {CURLE_FILE_COULDNT_READ_FILE, "cannot be read", {}};
    return {};
}

LoadOutcome fetch(const std::string& url, std::string& data) {
    if (isWeb(url)) return fetchFromWeb(url, data);
    const std::string path = pathOfFileURL(url);
    if (!path.empty()) return fetchFile(path, data);
    return {CURLE_UNSUPPORTED_PROTOCOL, "no http, https or file URL", {}};
}

// A document of today's event services becomes one that the feed's parser reads; any other stays as it is.
LoadOutcome fetchSubstitute(std::string& data) {
    LoadOutcome outcome = fetch(feedSubstitute(), data);
    outcome.source = feedSubstitute();
    EventAnswer answer;
    answer.take(data);
    answer.finish();
    if (answer.shape() == EventAnswer::Shape::Today) data = std::move(answer).document();
    return outcome;
}

void traceFetch(const std::string& url, const LoadOutcome& outcome, std::size_t bytes) {
    const std::string answeredBy = outcome.source.empty() ? "" : " (answered by " + outcome.source + ")";
    const std::string result = outcome.errorCode == 0
                                   ? std::to_string(bytes) + " bytes"
                                   : outcome.failure + " (error " + std::to_string(outcome.errorCode) + ")";
    trace("fetch " + url + answeredBy + ": " + result);
}

}  // namespace

bool loadResource(const std::string& url, std::string& data, int& errorCode) {
    data.clear();
    const bool isSubstituted = isWeb(url) && !feedSubstitute().empty();
    const LoadOutcome outcome = isSubstituted      ? fetchSubstitute(data)
                                : isFeedQuery(url) ? loadEvents(url, data)
                                                   : fetch(url, data);
    traceFetch(url, outcome, data.size());
    errorCode = outcome.errorCode;
    return errorCode == 0;
}

bool writeResource(const std::string& url, const std::string& data, int& errorCode) {
    const std::string path = pathOfFileURL(url);
    const bool written = !path.empty() && writeFileAtomically(path, data);
    errorCode = written ? 0 : coreFoundationUnknownErr;
    return written;
}

std::string fileURLWithPath(const std::string& path) {
    std::error_code error;
    const std::filesystem::path absolute = std::filesystem::absolute(path, error);
    if (error) return {};
    return toString(g_filename_to_uri(absolute.c_str(), nullptr, nullptr));
}

std::string pathOfFileURL(const std::string& url) {
    char* host = nullptr;
    const std::string path = toString(g_filename_from_uri(url.c_str(), &host, nullptr));
    const std::string hostName = toString(host);
    const bool local = hostName.empty() || hostName == "localhost";
    return local ? path : std::string();
}

}  // namespace platform
