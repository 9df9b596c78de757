#pragma once

#include <functional>
#include <optional>
#include <string>

namespace platform {

// The most that one resource may hold, unpacked.
inline constexpr long long kMaxResourceBytes = 64LL << 20;

// The published value of the error that stands for no particular one.
inline constexpr int coreFoundationUnknownErr = -4960;

// How a load ended.
struct LoadOutcome {
    int errorCode = 0;      // 0 when the resource was loaded
    std::string failure{};  // human-readable
    std::string source{};   // who answered, human-readable; empty where the URL did
};

// Reads the resource at an http, https or file URL, blocking. After an error data is empty; an http answer
// other than 200 is one.
LoadOutcome fetchResource(const std::string& url, std::string& data);

// From now on responder is asked first for every URL that loadResource is given. It returns nothing for a URL
// that it leaves to fetchResource.
using URLResponder = std::function<std::optional<LoadOutcome>(const std::string& url, std::string& data)>;
void setURLResponder(URLResponder responder);

// Reads the resource at a URL from the responder or else as fetchResource. Returns false and sets errorCode
// (never 0) after an error; data is then empty.
bool loadResource(const std::string& url, std::string& data, int& errorCode);

// Writes bytes to a file URL. Returns false and sets errorCode (never 0) when that fails.
bool writeResource(const std::string& url, const std::string& data, int& errorCode);

// The file URL of a path, and the path of a file URL (empty for any other URL).
std::string fileURLWithPath(const std::string& path);
std::string pathOfFileURL(const std::string& url);

}  // namespace platform
