#include "platform/linux/system/HttpTransfer.h"

#include <algorithm>
#include <csignal>

#include "platform/linux/system/RunLoop.h"

namespace platform {

namespace {

constexpr long kHttpOK = 200;
// How long an event of the main loop may have to wait for its turn.
constexpr int kPollMilliseconds = 20;
constexpr std::size_t kMostComplaintBytes = 1024;

std::string userAgent() {
    return std::string("Tellmar/" TELLMAR_VERSION " libcurl/") + curl_version_info(CURLVERSION_NOW)->version;
}

// curl, told to leave signals alone, can raise SIGPIPE on a TLS connection that the server has dropped.
void ignoreBrokenPipes() { std::signal(SIGPIPE, SIG_IGN); }

}  // namespace

HttpTransfer::HttpTransfer(const std::string& url, const HttpLimits& limits)
    : mLimits(limits), mEasy(curl_easy_init()), mMulti(curl_multi_init()) {
    if (!mEasy || !mMulti) return;
    ignoreBrokenPipes();
    configure(url);
    curl_multi_add_handle(mMulti, mEasy);
}

HttpTransfer::~HttpTransfer() {
    if (mEasy && mMulti) curl_multi_remove_handle(mMulti, mEasy);
    curl_easy_cleanup(mEasy);
    curl_multi_cleanup(mMulti);
    curl_slist_free_all(mHeaders);
}

void HttpTransfer::addHeader(const std::string& name, const std::string& value) {
    curl_slist* const longer = curl_slist_append(mHeaders, (name + ": " + value).c_str());
    if (!longer || !mEasy) return;
    mHeaders = longer;
    curl_easy_setopt(mEasy, CURLOPT_HTTPHEADER, mHeaders);
}

void HttpTransfer::configure(const std::string& url) {
    curl_easy_setopt(mEasy, CURLOPT_URL, url.c_str());
    curl_easy_setopt(mEasy, CURLOPT_PROTOCOLS_STR, "http,https");
    curl_easy_setopt(mEasy, CURLOPT_REDIR_PROTOCOLS_STR, "http,https");
    curl_easy_setopt(mEasy, CURLOPT_FOLLOWLOCATION, 1L);
    curl_easy_setopt(mEasy, CURLOPT_MAXREDIRS, mLimits.redirects);
    curl_easy_setopt(mEasy, CURLOPT_ACCEPT_ENCODING, "gzip");
    curl_easy_setopt(mEasy, CURLOPT_USERAGENT, userAgent().c_str());
    curl_easy_setopt(mEasy, CURLOPT_CONNECTTIMEOUT_MS, mLimits.connectMilliseconds);
    curl_easy_setopt(mEasy, CURLOPT_TIMEOUT_MS, mLimits.totalMilliseconds);
    // Refuses by the announced length; what arrives all the same is counted in take.
    curl_easy_setopt(mEasy, CURLOPT_MAXFILESIZE_LARGE, static_cast<curl_off_t>(mLimits.packedBytes));
    curl_easy_setopt(mEasy, CURLOPT_NOSIGNAL, 1L);
    // A name server that hangs must not delay the end of the process.
    curl_easy_setopt(mEasy, CURLOPT_QUICK_EXIT, 1L);
    curl_easy_setopt(mEasy, CURLOPT_ERRORBUFFER, mDetail.data());
    curl_easy_setopt(mEasy, CURLOPT_WRITEFUNCTION, &HttpTransfer::onBytes);
    curl_easy_setopt(mEasy, CURLOPT_WRITEDATA, this);
}

int HttpTransfer::run() {
    const int error = judge(mEasy && mMulti ? perform() : CURLE_FAILED_INIT);
    if (error != 0) mBody = {};
    return error;
}

CURLcode HttpTransfer::perform() {
    int running = 1;
    while (!RunLoop::isStopping()) {
        if (curl_multi_perform(mMulti, &running) != CURLM_OK) return CURLE_FAILED_INIT;
        if (running == 0) return finishedWith();
        RunLoop::pump();
        curl_multi_poll(mMulti, nullptr, 0, kPollMilliseconds, nullptr);
    }
    return CURLE_ABORTED_BY_CALLBACK;
}

CURLcode HttpTransfer::finishedWith() {
    int left = 0;
    while (const CURLMsg* message = curl_multi_info_read(mMulti, &left))
        if (message->msg == CURLMSG_DONE) return message->data.result;
    return CURLE_FAILED_INIT;
}

// A status that is not 200 says more than the refusal of its body.
int HttpTransfer::judge(CURLcode result) {
    const bool answered = result == CURLE_OK || result == CURLE_WRITE_ERROR;
    if (answered && status() != kHttpOK) {
        mFailure = "HTTP status " + std::to_string(status());
        return status() != 0 ? static_cast<int>(status()) : coreFoundationUnknownErr;
    }
    if (result == CURLE_OK) return 0;
    if (mRefused) {
        mFailure = "not the document asked for";
        return coreFoundationUnknownErr;
    }
    if (mTooLarge) {
        mFailure = "too large";
        return CURLE_FILESIZE_EXCEEDED;
    }
    mFailure = mDetail[0] != '\0' ? mDetail.data() : curl_easy_strerror(result);
    return result;
}

long HttpTransfer::status() const {
    long code = 0;
    curl_easy_getinfo(mEasy, CURLINFO_RESPONSE_CODE, &code);
    return code;
}

std::string HttpTransfer::header(const char* name) const {
    curl_header* found = nullptr;
    const CURLHcode result = curl_easy_header(mEasy, name, 0, CURLH_HEADER, -1, &found);
    return result == CURLHE_OK ? found->value : "";
}

long long HttpTransfer::retryAfterSeconds() const {
    curl_off_t seconds = 0;
    curl_easy_getinfo(mEasy, CURLINFO_RETRY_AFTER, &seconds);
    return seconds;
}

std::string HttpTransfer::complaint() const {
    std::string line = mComplaint.substr(0, mComplaint.find_first_of("\r\n"));
    std::replace_if(
        line.begin(), line.end(),
        [](unsigned char character) { return character < ' ' || character == 0x7f; }, ' ');
    return line;
}

bool HttpTransfer::take(const char* bytes, std::size_t count) {
    if (status() != kHttpOK) return takeComplaint({bytes, count});
    mTooLarge = isTooLarge(count);
    if (mTooLarge) return false;
    mReceived += static_cast<long long>(count);
    if (mSink)
        mRefused = !mSink({bytes, count});
    else
        mBody.append(bytes, count);
    return !mRefused;
}

// Returns false once the first line is here.
bool HttpTransfer::takeComplaint(std::string_view bytes) {
    mComplaint += bytes.substr(0, kMostComplaintBytes - mComplaint.size());
    return mComplaint.size() < kMostComplaintBytes && mComplaint.find('\n') == mComplaint.npos;
}

bool HttpTransfer::isTooLarge(std::size_t count) {
    curl_off_t packed = 0;
    curl_easy_getinfo(mEasy, CURLINFO_SIZE_DOWNLOAD_T, &packed);
    return packed > mLimits.packedBytes || mReceived + static_cast<long long>(count) > mLimits.bytes;
}

std::size_t HttpTransfer::onBytes(char* bytes, std::size_t size, std::size_t count, void* transfer) {
    return static_cast<HttpTransfer*>(transfer)->take(bytes, size * count) ? size * count
                                                                           : CURL_WRITEFUNC_ERROR;
}

}  // namespace platform
