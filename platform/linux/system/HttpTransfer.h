#pragma once

#include <curl/curl.h>

#include <array>
#include <string>

#include "platform/URLLoading.h"

namespace platform {

struct HttpLimits {
    long connectMilliseconds = 10'000;
    long totalMilliseconds = 30'000;
    long redirects = 5;
    long long bytes = kMaxResourceBytes;  // unpacked
};

// One http or https GET on the calling thread, which serves the main loop's events while it waits: the window
// stays alive, and a stop of the main loop gives the transfer up at once.
class HttpTransfer {
  public:
    explicit HttpTransfer(const std::string& url, const HttpLimits& limits = {});
    ~HttpTransfer();
    HttpTransfer(const HttpTransfer&) = delete;
    HttpTransfer& operator=(const HttpTransfer&) = delete;

    // Returns 0 when the server answered 200 and body() is whole, else curl's code or the HTTP status; body()
    // is then empty. libcurl does not notice a gzip stream that ends too early if HTTP itself ended in good
    // order: that is left to whoever parses the body. To be called once.
    int run();
    std::string& body() { return mBody; }
    // What went wrong, for people.
    const std::string& failure() const { return mFailure; }

  private:
    void configure(const std::string& url);
    CURLcode perform();
    CURLcode finishedWith();
    int judge(CURLcode result);
    long status() const;
    bool take(const char* bytes, std::size_t count);
    static std::size_t onBytes(char* bytes, std::size_t size, std::size_t count, void* transfer);

    HttpLimits mLimits;
    CURL* mEasy;
    CURLM* mMulti;
    std::array<char, CURL_ERROR_SIZE> mDetail{};
    std::string mBody;
    bool mTooLarge = false;
    std::string mFailure;
};

}  // namespace platform
