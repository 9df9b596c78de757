#include "platform/URLLoading.h"

#include <curl/curl.h>
#include <glib.h>

#include <filesystem>
#include <string_view>
#include <utility>

#include "platform/Files.h"
#include "platform/HTTPTransfer.h"
#include "platform/Log.h"
#include "platform/linux/Handles.h"

namespace platform {

namespace {

URLResponder urlResponder;

bool isWeb(const std::string& url) {
    const char* const scheme = g_uri_peek_scheme(url.c_str());
    return scheme && (std::string_view(scheme) == "http" || std::string_view(scheme) == "https");
}

LoadOutcome fetchFromWeb(const std::string& url, std::string& data) {
    HTTPResponse response = get({.url = url});
    data = std::move(response.body);
    return {response.errorCode, response.failure, {}};
}

// Only regular files: reading from a pipe could block forever.
LoadOutcome fetchFile(const std::string& path, std::string& data) {
    std::error_code error;
    if (!std::filesystem::exists(path, error)) return {CURLE_FILE_COULDNT_READ_FILE, "no such file", {}};
    if (!std::filesystem::is_regular_file(path, error))
        return {CURLE_FILE_COULDNT_READ_FILE, "not a regular file", {}};
    const std::uintmax_t size = std::filesystem::file_size(path, error);
    if (!error && size > static_cast<std::uintmax_t>(kMaxResourceBytes))
        return {CURLE_FILESIZE_EXCEEDED, "larger than 64 MiB", {}};
    if (!readFile(path, data)) return {CURLE_FILE_COULDNT_READ_FILE, "cannot be read", {}};
    return {};
}

void traceFetch(const std::string& url, const LoadOutcome& outcome, std::size_t bytes) {
    const std::string answeredBy = outcome.source.empty() ? "" : " (answered by " + outcome.source + ")";
    const std::string result = outcome.errorCode == 0
                                   ? std::to_string(bytes) + " bytes"
                                   : outcome.failure + " (error " + std::to_string(outcome.errorCode) + ")";
    trace("fetch " + url + answeredBy + ": " + result);
}

}  // namespace

LoadOutcome fetchResource(const std::string& url, std::string& data) {
    data.clear();
    if (isWeb(url)) return fetchFromWeb(url, data);
    const std::string path = pathOfFileURL(url);
    if (!path.empty()) return fetchFile(path, data);
    return {CURLE_UNSUPPORTED_PROTOCOL, "not an http, https or file URL", {}};
}

void setURLResponder(URLResponder responder) { urlResponder = std::move(responder); }

bool loadResource(const std::string& url, std::string& data, int& errorCode) {
    data.clear();
    const auto answer = urlResponder ? urlResponder(url, data) : std::nullopt;
    const LoadOutcome outcome = answer ? *answer : fetchResource(url, data);
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
    return toString(GText(g_filename_to_uri(absolute.c_str(), nullptr, nullptr)));
}

std::string pathOfFileURL(const std::string& url) {
    char* host = nullptr;
    const std::string path = toString(GText(g_filename_from_uri(url.c_str(), &host, nullptr)));
    const std::string hostName = toString(GText(host));
    const bool local = hostName.empty() || hostName == "localhost";
    return local ? path : std::string();
}

}  // namespace platform
