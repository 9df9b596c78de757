#include "platform/HTTPTransfer.h"

#include <curl/curl.h>

#include <algorithm>
#include <array>
#include <csignal>

#include "platform/Clock.h"
#include "platform/RunLoop.h"
#include "platform/linux/Handles.h"

namespace platform {

namespace {

constexpr long kHttpOK = 200;
constexpr long kConnectMilliseconds = 10'000;
constexpr long kMaxRedirects = 5;
// The longest that an event of the main loop has to wait.
constexpr int kPollMilliseconds = 10;
constexpr std::size_t kMaxComplaintBytes = 1024;

using EasyHandle = Handle<CURL, curl_easy_cleanup>;
using MultiHandle = Handle<CURLM, curl_multi_cleanup>;
using HeaderList = Handle<curl_slist, curl_slist_free_all>;

std::string userAgent() {
    return std::string("Tellmar/" TELLMAR_VERSION " libcurl/") + curl_version_info(CURLVERSION_NOW)->version;
}

// With CURLOPT_NOSIGNAL, curl can raise SIGPIPE on a TLS connection that the server has dropped.
void ignoreBrokenPipes() { std::signal(SIGPIPE, SIG_IGN); }

HeaderList headerList(const std::vector<HTTPHeader>& headers) {
    HeaderList list;
    for (const auto& [name, value] : headers) {
        curl_slist* const longer = curl_slist_append(list.get(), (name + ": " + value).c_str());
        if (!longer) break;
        [[maybe_unused]] const auto* const same = list.release();
        list.reset(longer);
    }
    return list;
}

std::string printable(std::string line) {
    const auto isControl = [](unsigned char character) { return character < ' ' || character == 0x7f; };
    std::replace_if(line.begin(), line.end(), isControl, ' ');
    return line;
}

class Stopwatch {
  public:
    long long milliseconds() const { return (monotonicMicroseconds() - mStart) / 1000; }

  private:
    long long mStart = monotonicMicroseconds();
};

class Transfer {
  public:
    explicit Transfer(const HTTPRequest& request)
        : mRequest(request),
          mHeaders(headerList(request.headers)),
          mEasy(curl_easy_init()),
          mMulti(curl_multi_init()) {
        if (!mEasy || !mMulti) return;
        ignoreBrokenPipes();
        configure(mEasy.get());
        curl_multi_add_handle(mMulti.get(), mEasy.get());
    }
    ~Transfer() {
        if (mEasy && mMulti) curl_multi_remove_handle(mMulti.get(), mEasy.get());
    }
    Transfer(const Transfer&) = delete;
    Transfer& operator=(const Transfer&) = delete;

    HTTPResponse run() {
        const CURLcode result = mEasy && mMulti ? perform() : CURLE_FAILED_INIT;
        if (mGivenUp != CURLE_OK) mDetail = {};  // only says that the bytes were not taken
        if (mEasy) readAnswer();
        judge(mGivenUp != CURLE_OK ? mGivenUp : result);
        if (mResponse.errorCode != 0) mResponse.body = {};
        return std::move(mResponse);
    }

  private:
    template <typename Value>
    void set(CURLoption option, Value value) {
        curl_easy_setopt(mEasy.get(), option, value);
    }

    void configure(CURL* easy) {
        set(CURLOPT_URL, mRequest.url.c_str());
        set(CURLOPT_HTTPHEADER, mHeaders.get());
        set(CURLOPT_PROTOCOLS_STR, "http,https");
        set(CURLOPT_REDIR_PROTOCOLS_STR, "http,https");
        set(CURLOPT_FOLLOWLOCATION, 1L);
        set(CURLOPT_MAXREDIRS, kMaxRedirects);
        set(CURLOPT_ACCEPT_ENCODING, "gzip");
        set(CURLOPT_USERAGENT, userAgent().c_str());
        set(CURLOPT_CONNECTTIMEOUT_MS, kConnectMilliseconds);
        set(CURLOPT_TIMEOUT_MS, static_cast<long>(mRequest.maxMilliseconds));
        // Checks the announced length only; take counts what really arrives.
        set(CURLOPT_MAXFILESIZE_LARGE, static_cast<curl_off_t>(kMaxResourceBytes));
        set(CURLOPT_NOSIGNAL, 1L);
        // A hanging name server must not delay the end of the process.
        set(CURLOPT_QUICK_EXIT, 1L);
        set(CURLOPT_ERRORBUFFER, mDetail.data());
        curl_easy_setopt(easy, CURLOPT_WRITEFUNCTION, &Transfer::onBytes);
        set(CURLOPT_WRITEDATA, this);
    }

    CURLcode perform() {
        int running = 1;
        while (!RunLoop::isStopping()) {
            if (curl_multi_perform(mMulti.get(), &running) != CURLM_OK) return CURLE_FAILED_INIT;
            if (running == 0) return finishedWith();
            RunLoop::pump();
            curl_multi_poll(mMulti.get(), nullptr, 0, kPollMilliseconds, nullptr);
        }
        return CURLE_ABORTED_BY_CALLBACK;
    }

    CURLcode finishedWith() {
        int left = 0;
        while (const CURLMsg* message = curl_multi_info_read(mMulti.get(), &left))
            if (message->msg == CURLMSG_DONE) return message->data.result;
        return CURLE_FAILED_INIT;
    }

    void readAnswer() {
        mResponse.status = status();
        curl_off_t seconds = 0;
        curl_easy_getinfo(mEasy.get(), CURLINFO_RETRY_AFTER, &seconds);
        mResponse.retryAfterSeconds = seconds;
        curl_header* header = nullptr;
        while ((header = curl_easy_nextheader(mEasy.get(), CURLH_HEADER, -1, header)))
            mResponse.headers.push_back({header->name, header->value});
        mResponse.complaint = printable(mComplaint.substr(0, mComplaint.find_first_of("\r\n")));
    }

    // A status other than 200 says more than that its body was refused.
    void judge(CURLcode result) {
        const bool answered = result == CURLE_OK || result == CURLE_WRITE_ERROR;
        if (answered && mResponse.status != kHttpOK)
            fail(mResponse.status != 0 ? static_cast<int>(mResponse.status) : coreFoundationUnknownErr,
                 "HTTP status " + std::to_string(mResponse.status));
        else if (mIsRefused)
            fail(coreFoundationUnknownErr, "not the document asked for");
        else if (mIsTooLarge)
            fail(CURLE_FILESIZE_EXCEEDED, "larger than the limit");
        else if (result != CURLE_OK)
            fail(result, mDetail[0] != '\0' ? mDetail.data() : curl_easy_strerror(result));
    }

    void fail(int errorCode, std::string failure) {
        mResponse.errorCode = errorCode;
        mResponse.failure = std::move(failure);
    }

    long status() const {
        long code = 0;
        curl_easy_getinfo(mEasy.get(), CURLINFO_RESPONSE_CODE, &code);
        return code;
    }

    bool take(std::string_view bytes) {
        if (!mayGoOn()) return false;
        if (status() != kHttpOK) return takeComplaint(bytes);
        mIsTooLarge = isTooLarge(bytes.size());
        if (mIsTooLarge) return false;
        mReceived += static_cast<long long>(bytes.size());
        if (mRequest.sink)
            mIsRefused = !mRequest.sink(bytes);
        else
            mResponse.body += bytes;
        return !mIsRefused;
    }

    // A few bytes off the wire can unpack for minutes within a single call of curl.
    bool mayGoOn() {
        if (mSinceLastPump.milliseconds() >= kPollMilliseconds) {
            RunLoop::pump();
            mSinceLastPump = {};
        }
        if (RunLoop::isStopping()) mGivenUp = CURLE_ABORTED_BY_CALLBACK;
        if (mSinceStart.milliseconds() >= mRequest.maxMilliseconds) mGivenUp = CURLE_OPERATION_TIMEDOUT;
        return mGivenUp == CURLE_OK;
    }

    // Returns false once the first line is here.
    bool takeComplaint(std::string_view bytes) {
        mComplaint += bytes.substr(0, kMaxComplaintBytes - mComplaint.size());
        return mComplaint.size() < kMaxComplaintBytes && mComplaint.find('\n') == mComplaint.npos;
    }

    bool isTooLarge(std::size_t count) const {
        curl_off_t packed = 0;
        curl_easy_getinfo(mEasy.get(), CURLINFO_SIZE_DOWNLOAD_T, &packed);
        return packed > kMaxResourceBytes || mReceived + static_cast<long long>(count) > mRequest.maxBytes;
    }

    static std::size_t onBytes(char* bytes, std::size_t size, std::size_t count, void* transfer) {
        const std::string_view all(bytes, size * count);
        return static_cast<Transfer*>(transfer)->take(all) ? all.size() : CURL_WRITEFUNC_ERROR;
    }

    const HTTPRequest& mRequest;
    HeaderList mHeaders;
    EasyHandle mEasy;
    MultiHandle mMulti;
    std::array<char, CURL_ERROR_SIZE> mDetail{};
    HTTPResponse mResponse;
    std::string mComplaint;
    Stopwatch mSinceStart, mSinceLastPump;
    CURLcode mGivenUp = CURLE_OK;  // why this side gave the transfer up
    long long mReceived = 0;       // unpacked bytes of a good answer
    bool mIsTooLarge = false;
    bool mIsRefused = false;  // by the sink
};

}  // namespace

HTTPResponse get(const HTTPRequest& request) { return Transfer(request).run(); }

}  // namespace platform
