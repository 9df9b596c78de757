#include "tests/support/LoopbackServer.h"

#include <algorithm>
#include <chrono>
#include <memory>

namespace {

constexpr char kLoopback[] = "127.0.0.1";
constexpr char kBinary[] = "application/octet-stream";
constexpr std::size_t kBlock = 1 << 16;

// Writes the next block of count bytes that begin at offset.
bool sendBlock(httplib::DataSink& sink, std::size_t offset, std::size_t count) {
    static const std::string block(kBlock, 'x');
    return sink.write(block.data(), std::min(kBlock, count - offset));
}

}  // namespace

LoopbackServer::LoopbackServer() {
    serveStatus(404);
    mServer.Get(".*", [this](const auto& request, auto& response) { handle(request, response); });
    mPort = mServer.bind_to_any_port(kLoopback);
    mThread = std::thread([this] { mServer.listen_after_bind(); });
    while (!mServer.is_running()) pause();
}

LoopbackServer::~LoopbackServer() {
    mLeaving = true;
    mServer.stop();
    mThread.join();
}

std::string LoopbackServer::host() const {
    return std::string("http://") + kLoopback + ":" + std::to_string(mPort);
}

void LoopbackServer::serve(const std::string& document, const std::string& contentType) {
    answerWith([=](const auto&, auto& response) { response.set_content(document, contentType); });
}

void LoopbackServer::serveStatus(int status, const std::string& body, const std::string& contentType) {
    answerWith([=](const auto&, auto& response) {
        response.status = status;
        if (!body.empty()) response.set_content(body, contentType);
    });
}

void LoopbackServer::redirectTo(const std::string& location) {
    answerWith([=](const auto&, auto& response) { response.set_redirect(location); });
}

void LoopbackServer::redirectTimes(int times, const std::string& document) {
    const auto left = std::make_shared<std::atomic<int>>(times);
    answerWith([=](const auto&, auto& response) {
        if ((*left)-- > 0)
            response.set_redirect("/again");
        else
            response.set_content(document, kBinary);
    });
}

void LoopbackServer::cutOff(const std::string& document) {
    answerWith([=](const auto&, auto& response) {
        response.set_content_provider(document.size(), kBinary, [=](auto offset, auto, auto& sink) {
            return offset == 0 && sink.write(document.data(), document.size() / 2);
        });
    });
}

void LoopbackServer::serveBytes(std::size_t count, bool announced) {
    answerWith([=](const auto&, auto& response) {
        if (announced)
            response.set_content_provider(count, kBinary, [=](auto offset, auto, auto& sink) {
                return sendBlock(sink, offset, count);
            });
        else
            response.set_chunked_content_provider(kBinary, [=](auto offset, auto& sink) {
                if (offset < count) return sendBlock(sink, offset, count);
                sink.done();
                return true;
            });
    });
}

void LoopbackServer::serveAsGzip(const std::string& bytes) {
    answerWith([=](const auto&, auto& response) {
        response.set_content(bytes, kBinary);
        response.set_header("Content-Encoding", "gzip");
    });
}

void LoopbackServer::trickle() {
    answerWith([this](const auto&, auto& response) {
        response.set_chunked_content_provider(kBinary, [this](auto, auto& sink) {
            pause();
            return !mLeaving && sink.write("<a>", 3);
        });
    });
}

void LoopbackServer::keepSilent() {
    answerWith([this](const auto&, auto&) {
        while (!mLeaving) pause();
    });
}

void LoopbackServer::answerWith(Answer answer) {
    const std::lock_guard lock(mMutex);
    mAnswer = std::move(answer);
}

std::string LoopbackServer::lastHeader(const std::string& name) const {
    const std::lock_guard lock(mMutex);
    return mLastRequest.get_header_value(name.c_str());
}

std::string LoopbackServer::lastTarget() const {
    const std::lock_guard lock(mMutex);
    return mLastRequest.target;
}

// The answer is copied so that a slow one does not keep others waiting.
void LoopbackServer::handle(const httplib::Request& request, httplib::Response& response) {
    ++mRequestCount;
    std::unique_lock lock(mMutex);
    mLastRequest = request;
    const Answer answer = mAnswer;
    lock.unlock();
    answer(request, response);
}

void LoopbackServer::pause() const { std::this_thread::sleep_for(std::chrono::milliseconds(5)); }
