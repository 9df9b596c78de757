#pragma once

#include <algorithm>
#include <cctype>
#include <functional>
#include <memory>
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
    long long maxBytes = kMaxResourceBytes;  // unpacked; on the wire it is always kMaxResourceBytes
    int maxMilliseconds = 30'000;
    // Receives the bytes of an answer with status 200 piece by piece, instead of HTTPResponse::body. Returns
    // false to abort the transfer.
    std::function<bool(std::string_view bytes)> sink{};
};

struct HTTPResponse {
    int errorCode = 0;      // 0: a complete answer with status 200; otherwise curl's code or the status
    std::string failure{};  // what went wrong, human-readable
    long status = 0;        // of the latest answer; 0 when there was none
    std::string body{};     // empty after an error
    std::vector<HTTPHeader> headers{};  // of the latest answer
    long long retryAfterSeconds = 0;    // how long the server asks us to wait
    std::string complaint{};            // the first line of an answer whose status is not 200

    // The value of a header, empty when there is no such header. Names are compared without case.
    std::string header(std::string_view name) const {
        const auto isSame = [](unsigned char a, unsigned char b) {
            return std::tolower(a) == std::tolower(b);
        };
        for (const HTTPHeader& each : headers)
            if (std::ranges::equal(each.name, name, isSame)) return each.value;
        return {};
    }
};

// One http or https GET that follows redirects, and goes on while the main loop runs. The main loop runs,
// too, while a large answer is taken, so the window stays responsive; stopping it aborts the transfer at
// once. libcurl does not notice a gzip stream that ends too early when HTTP itself ended properly: whoever
// parses the body has to.
class HTTPTransfer {
  public:
    using Handler = std::function<void(HTTPResponse response)>;

    // The main loop calls handler once the transfer is over, unless it has been stopped. The handler may
    // destroy the transfer.
    HTTPTransfer(HTTPRequest request, Handler handler);
    // Aborts a transfer that is not over.
    ~HTTPTransfer();
    HTTPTransfer(const HTTPTransfer&) = delete;
    HTTPTransfer& operator=(const HTTPTransfer&) = delete;

  private:
    class Transfer;
    std::unique_ptr<Transfer> mTransfer;
};

// The same, blocking: runs the main loop until the transfer is over.
HTTPResponse get(HTTPRequest request);

}  // namespace platform
