#include "platform/HTTPTransfer.h"

#include <curl/curl.h>
#include <glib-unix.h>

#include <array>
#include <csignal>
#include <map>
#include <optional>
#include <utility>

#include "platform/Clock.h"
#include "platform/PrintableText.h"
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
// What is on the screen comes first.
constexpr int kPriority = G_PRIORITY_DEFAULT_IDLE;

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

class Stopwatch {
  public:
    long long milliseconds() const { return (monotonicMicroseconds() - mStart) / 1000; }

  private:
    long long mStart = monotonicMicroseconds();
};

GIOCondition conditionOf(int what) {
    int condition = 0;
    if (what & CURL_POLL_IN) condition |= G_IO_IN;
    if (what & CURL_POLL_OUT) condition |= G_IO_OUT;
    return static_cast<GIOCondition>(condition);
}

int eventsOf(GIOCondition condition) {
    int events = 0;
    if (condition & (G_IO_IN | G_IO_HUP)) events |= CURL_CSELECT_IN;
    if (condition & G_IO_OUT) events |= CURL_CSELECT_OUT;
    if (condition & (G_IO_ERR | G_IO_NVAL)) events |= CURL_CSELECT_ERR;
    return events;
}

}  // namespace

// Curl says which sockets and what time it waits for, and sources of the main loop wake it.
class HTTPTransfer::Transfer {
  public:
    Transfer(HTTPRequest request, Handler handler)
        : mRequest(std::move(request)),
          mHandler(std::move(handler)),
          mHeaders(headerList(mRequest.headers)),
          mEasy(curl_easy_init()),
          mMulti(curl_multi_init()) {
        if (!isReady()) {
            wakeAfter(0);
            return;
        }
        ignoreBrokenPipes();
        configure(mEasy.get());
        listenTo(mMulti.get());
        curl_multi_add_handle(mMulti.get(), mEasy.get());
    }
    ~Transfer() {
        if (isReady()) curl_multi_remove_handle(mMulti.get(), mEasy.get());
        removeSources();
    }
    Transfer(const Transfer&) = delete;
    Transfer& operator=(const Transfer&) = delete;

  private:
    bool isReady() const { return mEasy && mMulti; }

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

    void listenTo(CURLM* multi) {
        const auto onSocket = +[](CURL*, curl_socket_t socket, int what, void* self, void*) {
            static_cast<Transfer*>(self)->watch(socket, what);
            return 0;
        };
        const auto onTimer = +[](CURLM*, long milliseconds, void* self) {
            static_cast<Transfer*>(self)->wakeAfter(milliseconds);
            return 0;
        };
        curl_multi_setopt(multi, CURLMOPT_SOCKETFUNCTION, onSocket);
        curl_multi_setopt(multi, CURLMOPT_SOCKETDATA, this);
        curl_multi_setopt(multi, CURLMOPT_TIMERFUNCTION, onTimer);
        curl_multi_setopt(multi, CURLMOPT_TIMERDATA, this);
    }

    void watch(curl_socket_t socket, int what) {
        if (const auto old = mWatches.extract(socket)) g_source_remove(old.mapped());
        if (what == CURL_POLL_REMOVE) return;
        const auto proceed = [](gint ready, GIOCondition condition, gpointer self) -> gboolean {
            static_cast<Transfer*>(self)->proceed(ready, eventsOf(condition));
            return G_SOURCE_CONTINUE;
        };
        mWatches[socket] = g_unix_fd_add_full(kPriority, socket, conditionOf(what), proceed, this, nullptr);
    }

    // Below zero: not at all.
    void wakeAfter(long milliseconds) {
        if (mTimer != 0) g_source_remove(std::exchange(mTimer, 0));
        if (milliseconds < 0) return;
        const auto wake = [](gpointer self) { return static_cast<Transfer*>(self)->wake(); };
        mTimer = g_timeout_add_full(kPriority, static_cast<guint>(milliseconds), wake, this, nullptr);
    }

    gboolean wake() {
        if (mIsInCurl) return G_SOURCE_CONTINUE;
        mTimer = 0;
        proceed(CURL_SOCKET_TIMEOUT, 0);
        return G_SOURCE_REMOVE;
    }

    // Taking bytes runs the main loop, which may come here again.
    void proceed(curl_socket_t socket, int events) {
        if (!isReady()) return finish(CURLE_FAILED_INIT);
        if (mIsInCurl) return;
        mIsInCurl = true;
        int running = 0;
        const CURLMcode code = curl_multi_socket_action(mMulti.get(), socket, events, &running);
        mIsInCurl = false;
        if (code != CURLM_OK)
            finish(CURLE_FAILED_INIT);
        else if (running == 0)
            finish(finishedWith());
    }

    // The handler may destroy this.
    void finish(CURLcode result) {
        removeSources();
        if (RunLoop::isStopping() || !mHandler) return;
        if (mGivenUp != CURLE_OK) mDetail = {};  // only says that the bytes were not taken
        if (mEasy) readAnswer();
        judge(mGivenUp != CURLE_OK ? mGivenUp : result);
        if (mResponse.errorCode != 0) mResponse.body = {};
        std::exchange(mHandler, nullptr)(std::move(mResponse));
    }

    void removeSources() {
        wakeAfter(-1);
        for (const auto& [socket, source] : mWatches) g_source_remove(source);
        mWatches.clear();
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

    const HTTPRequest mRequest;
    Handler mHandler;  // empty once it has been called
    std::map<curl_socket_t, guint> mWatches;
    guint mTimer = 0;
    bool mIsInCurl = false;
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

HTTPTransfer::HTTPTransfer(HTTPRequest request, Handler handler)
    : mTransfer(std::make_unique<Transfer>(std::move(request), std::move(handler))) {}

HTTPTransfer::~HTTPTransfer() = default;

HTTPResponse get(HTTPRequest request) {
    std::optional<HTTPResponse> response;
    const HTTPTransfer transfer(std::move(request), [&](HTTPResponse given) { response = std::move(given); });
    RunLoop::runUntil([&] { return response.has_value(); });
    if (response) return *std::move(response);
    return {.errorCode = CURLE_ABORTED_BY_CALLBACK, .failure = curl_easy_strerror(CURLE_ABORTED_BY_CALLBACK)};
}

}  // namespace platform
