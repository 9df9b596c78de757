#include "tests/standins/URLLoading.h"

#include "platform/Files.h"
#include "platform/URLLoading.h"

namespace platform {

namespace {

constexpr std::string_view kFileScheme = "file://";

// The error code of a load or write that went well or not.
int codeOf(bool succeeded) { return succeeded ? 0 : coreFoundationUnknownErr; }

}  // namespace

bool loadResource(const std::string& url, std::string& data, int& errorCode) {
    standins::URLLoading& network = standins::urlLoading();
    network.asked.push_back(url);
    const std::string path = pathOfFileURL(url);
    if (path.empty()) data = network.answerToAll.value_or("");
    errorCode = codeOf(path.empty() ? network.answerToAll.has_value() : readFile(path, data));
    return errorCode == 0;
}

bool writeResource(const std::string& url, const std::string& data, int& errorCode) {
    const std::string path = pathOfFileURL(url);
    errorCode = codeOf(!path.empty() && writeFileAtomically(path, data));
    return errorCode == 0;
}

std::string fileURLWithPath(const std::string& path) { return std::string(kFileScheme) + path; }

std::string pathOfFileURL(const std::string& url) {
    return url.starts_with(kFileScheme) ? url.substr(kFileScheme.size()) : "";
}

}  // namespace platform
