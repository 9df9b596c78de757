#pragma once

#include <functional>
#include <optional>
#include <string>

namespace platform {

// The size limit of one resource, unpacked.
inline constexpr long long kMaxResourceBytes = 64LL << 20;

// The published value of the unspecific error.
inline constexpr int coreFoundationUnknownErr = -4960;

// How a load ended.
struct LoadOutcome {
    int errorCode = 0;      // 0 when the resource was loaded
    std::string failure{};  // human-readable
    std::string source{};   // who answered, human-readable; empty when the URL itself did
};

// Loads the resource at an http, https or file URL, blocking. Any http status but 200 is an error. After an
// error data is empty.
LoadOutcome fetchResource(const std::string& url, std::string& data);

// From now on, loadResource asks responder first. responder returns nothing for a URL that it leaves to
// fetchResource.
using URLResponder = std::function<std::optional<LoadOutcome>(const std::string& url, std::string& data)>;
void setURLResponder(URLResponder responder);

// Loads the resource at a URL from the responder, or else with fetchResource. On failure returns false and
// sets errorCode (never 0); data is then empty.
bool loadResource(const std::string& url, std::string& data, int& errorCode);

// Writes data to a file URL. On failure returns false and sets errorCode (never 0).
bool writeResource(const std::string& url, const std::string& data, int& errorCode);

// The file URL of a path, and the path of a file URL (empty for any other URL).
std::string fileURLWithPath(const std::string& path);
std::string pathOfFileURL(const std::string& url);

}  // namespace platform
