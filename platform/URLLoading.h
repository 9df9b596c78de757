#pragma once

#include <string>

namespace platform {

// The most that one resource may hold, unpacked.
inline constexpr long long kMaxResourceBytes = 64LL << 20;

// The published value of the error that stands for no particular one.
inline constexpr int coreFoundationUnknownErr = -4960;

// Reads the resource at an http, https or file URL, blocking. Returns false and sets errorCode (never 0) when
// it cannot be had; data is then empty. An http answer other than 200 cannot be had. The quake list's query
// is asked of today's event service, whose answer comes in the form that the query asks for.
bool loadResource(const std::string& url, std::string& data, int& errorCode);

// Writes bytes to a file URL. Returns false and sets errorCode (never 0) when that fails.
bool writeResource(const std::string& url, const std::string& data, int& errorCode);

// The file URL of a path, and the path of a file URL (empty for any other URL).
std::string fileURLWithPath(const std::string& path);
std::string pathOfFileURL(const std::string& url);

}  // namespace platform
