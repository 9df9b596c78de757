#include "tests/standins/URLLoading.h"

#include "platform/Files.h"
#include "platform/URLLoading.h"

namespace standins {

URLLoading& urlLoading() {
    static URLLoading state;
    return state;
}

}  // namespace standins

namespace platform {

namespace {

constexpr char kFileScheme[] = "file://";

bool failed(int& errorCode) {
    errorCode = coreFoundationUnknownErr;
    return false;
}

bool answer(const std::string& url, std::string& data) {
    const standins::URLLoading& network = standins::urlLoading();
    const auto found = network.answers.find(url);
    if (found == network.answers.end() && !network.answerToAll) return false;
    data = found == network.answers.end() ? *network.answerToAll : found->second;
    return true;
}

}  // namespace

bool loadResource(const std::string& url, std::string& data, int& errorCode) {
    standins::urlLoading().asked.push_back(url);
    data.clear();
    const std::string path = pathOfFileURL(url);
    const bool isLoaded = path.empty() ? answer(url, data) : readFile(path, data);
    return isLoaded || failed(errorCode);
}

bool writeResource(const std::string& url, const std::string& data, int& errorCode) {
    const std::string path = pathOfFileURL(url);
    return (!path.empty() && writeFileAtomically(path, data)) || failed(errorCode);
}

std::string fileURLWithPath(const std::string& path) { return kFileScheme + path; }

std::string pathOfFileURL(const std::string& url) {
    const std::string scheme = kFileScheme;
    return url.starts_with(scheme) ? url.substr(scheme.size()) : "";
}

}  // namespace platform
