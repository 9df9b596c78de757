#pragma once

#include <algorithm>
#include <cctype>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/URLLoading.h"

namespace platform {

struct HTTPHeader {
    std::string name, value;
};

struct HTTPRequest {
    std::string url;
    std::vector<HTTPHeader> headers{};
    long long maxBytes = kMaxResourceBytes;  // unpacked; always kMaxResourceBytes on the wire
    int maxMilliseconds = 30'000;
    // Takes the bytes of an answer with status 200 piece by piece, instead of HTTPResponse::body. Returns
    // false to abort the transfer.
    std::function<bool(std::string_view bytes)> sink{};
};

struct HTTPResponse {
    int errorCode = 0;                  // 0: status 200 and a complete answer; else curl's code or the status
    std::string failure{};              // what went wrong, human-readable
    long status = 0;                    // of the latest answer; 0 without an answer
    std::string body{};                 // empty after an error
    std::vector<HTTPHeader> headers{};  // of the latest answer
    long long retryAfterSeconds = 0;    // how long the server asks us to wait
    std::string complaint{};            // the first line of an answer whose status is not 200

    // The value of a header; empty if there is no such header. The name is not case-sensitive.
    std::string header(std::string_view name) const {
        const auto isSame = [](unsigned char a, unsigned char b) {
            return std::tolower(a) == std::tolower(b);
        };
        for (const HTTPHeader& each : headers)
            if (std::ranges::equal(each.name, name, isSame)) return each.value;
        return {};
    }
};

// One http or https GET, including redirects. Runs the main loop while it waits, so the window stays alive; a
// stop of the main loop aborts the transfer at once. libcurl does not notice a truncated gzip stream if HTTP
// itself ended in good order: whoever parses the body must.
HTTPResponse get(const HTTPRequest& request);

}  // namespace platform
