#pragma once

#include <curl/curl.h>

#include <array>
#include <functional>
#include <string>
#include <string_view>

#include "platform/URLLoading.h"

namespace platform {

struct HttpLimits {
    long connectMilliseconds = 10'000;
    long totalMilliseconds = 30'000;
    long redirects = 5;
    long long bytes = kMaxResourceBytes;        // unpacked
    long long packedBytes = kMaxResourceBytes;  // as they come off the wire
};

// One http or https GET on the calling thread, which serves the main loop's events while it waits: the window
// stays alive, and a stop of the main loop gives the transfer up at once.
class HttpTransfer {
  public:
    explicit HttpTransfer(const std::string& url, const HttpLimits& limits = {});
    ~HttpTransfer();
    HttpTransfer(const HttpTransfer&) = delete;
    HttpTransfer& operator=(const HttpTransfer&) = delete;

    // The bytes of a good answer go there in place of body(). It returns false to give the transfer up.
    using Sink = std::function<bool(std::string_view bytes)>;
    void setSink(Sink sink) { mSink = std::move(sink); }
    void addHeader(const std::string& name, const std::string& value);

    // Returns 0 when the server answered 200 and body() is whole, else curl's code or the HTTP status; body()
    // is then empty. libcurl does not notice a gzip stream that ends too early if HTTP itself ended in good
    // order: that is left to whoever parses the body. To be called once.
    int run();
    std::string& body() { return mBody; }
    // What went wrong, for people.
    const std::string& failure() const { return mFailure; }
    // The status of the latest answer, 0 when there was none.
    long status() const;
    // A header of the latest answer; empty when it has none of that name.
    std::string header(const char* name) const;
    // How long the server asks to be left alone; 0 when it does not say.
    long long retryAfterSeconds() const;
    // The first line that came with a status other than 200.
    std::string complaint() const;

  private:
    void configure(const std::string& url);
    CURLcode perform();
    CURLcode finishedWith();
    int judge(CURLcode result);
    bool take(const char* bytes, std::size_t count);
    bool takeComplaint(std::string_view bytes);
    bool isTooLarge(std::size_t count);
    static std::size_t onBytes(char* bytes, std::size_t size, std::size_t count, void* transfer);

    HttpLimits mLimits;
    CURL* mEasy;
    CURLM* mMulti;
    std::array<char, CURL_ERROR_SIZE> mDetail{};
    curl_slist* mHeaders = nullptr;
    Sink mSink;
    std::string mBody;
    std::string mComplaint;
    long long mReceived = 0;  // unpacked bytes of a good answer
    bool mTooLarge = false;
    bool mRefused = false;  // by the sink
    std::string mFailure;
};

}  // namespace platform
