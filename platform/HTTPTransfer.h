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
    long long maxBytes = kMaxResourceBytes;  // unpacked; off the wire it is kMaxResourceBytes in any case
    int maxMilliseconds = 30'000;
    // Takes the bytes of an answer with status 200 piece by piece, in place of HTTPResponse::body. Returns
    // false to give the transfer up.
    std::function<bool(std::string_view bytes)> sink{};
};

struct HTTPResponse {
    int errorCode = 0;  // 0: the server answered 200 and the answer is whole; else curl's code or the status
    std::string failure{};              // what went wrong, human-readable
    long status = 0;                    // of the latest answer; 0 when there was none
    std::string body{};                 // empty after an error
    std::vector<HTTPHeader> headers{};  // of the latest answer
    long long retryAfterSeconds = 0;    // how long the server asks to be left alone
    std::string complaint{};            // the first line of an answer with another status than 200

    // The value of a header, whose name is compared without case; empty when there is none of that name.
    std::string header(std::string_view name) const {
        const auto isSame = [](unsigned char a, unsigned char b) {
            return std::tolower(a) == std::tolower(b);
        };
        for (const HTTPHeader& each : headers)
            if (std::ranges::equal(each.name, name, isSame)) return each.value;
        return {};
    }
};

// One http or https GET, redirects included. It runs the main loop while it waits, so the window stays alive,
// and a stop of the main loop gives the transfer up at once. libcurl does not notice a gzip stream that ends
// too early if HTTP itself ended in good order: that is left to whoever parses the body.
HTTPResponse get(const HTTPRequest& request);

}  // namespace platform
