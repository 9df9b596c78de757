#include "tests/support/LoopbackServer.h"

#include <algorithm>
#include <chrono>
#include <memory>

namespace {

constexpr char kBinary[] = "application/octet-stream";

// Writes some of count bytes from offset on. An announced length ends a body by itself, chunks do not.
bool sendSome(httplib::DataSink& sink, std::size_t offset, std::size_t count) {
    static const std::string block(1 << 16, 'x');
    if (offset < count) return sink.write(block.data(), std::min(block.size(), count - offset));
    sink.done();
    return true;
}

void waitALittle() { std::this_thread::sleep_for(std::chrono::milliseconds(5)); }

}  // namespace

LoopbackServer::LoopbackServer() {
    serveStatus(404);
    mServer.Get(".*", [this](const auto& request, auto& response) { handle(request, response); });
    mPort = mServer.bind_to_any_port("127.0.0.1");
    mThread = std::thread([this] { mServer.listen_after_bind(); });
    while (!mServer.is_running()) waitALittle();
}

LoopbackServer::~LoopbackServer() {
    mLeaving = true;
    mServer.stop();
    mThread.join();
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

void LoopbackServer::serveAfter(const std::vector<int>& statuses, const std::string& document) {
    const auto count = std::make_shared<std::atomic<std::size_t>>(0);
    answerWith([=](const auto&, auto& response) {
        const std::size_t number = (*count)++;
        if (number == statuses.size()) return response.set_content(document, "application/xml");
        response.status = statuses[number];
        response.set_header("Location", "/again");
    });
}

void LoopbackServer::redirectTo(const std::string& location) {
    answerWith([=](const auto&, auto& response) { response.set_redirect(location); });
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
            response.set_content_provider(
                count, kBinary, [=](auto offset, auto, auto& sink) { return sendSome(sink, offset, count); });
        else
            response.set_chunked_content_provider(
                kBinary, [=](auto offset, auto& sink) { return sendSome(sink, offset, count); });
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
            waitALittle();
            return !mLeaving && sink.write("<a>", 3);
        });
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
