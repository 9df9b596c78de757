#include "tests/support/LoopbackServer.h"

#include <algorithm>
#include <chrono>

namespace {

constexpr char kBinary[] = "application/octet-stream";

void waitALittle() { std::this_thread::sleep_for(std::chrono::milliseconds(5)); }

}  // namespace

LoopbackServer::LoopbackServer() {
    serve("", 404);
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

void LoopbackServer::serve(const std::string& document, int status) {
    answerWith([=](const auto&, auto& response) {
        response.status = status;
        response.set_content(document, "application/xml");
    });
}

void LoopbackServer::redirectTo(const std::string& location) {
    answerWith([=](const auto&, auto& response) { response.set_redirect(location); });
}

void LoopbackServer::serveBytes(std::size_t count) {
    answerWith([=](const auto&, auto& response) {
        response.set_chunked_content_provider(kBinary, [=](auto offset, auto& sink) {
            static const std::string block(1 << 16, 'x');
            if (offset < count) return sink.write(block.data(), std::min(block.size(), count - offset));
            sink.done();
            return true;
        });
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

httplib::Request LoopbackServer::lastRequest() const {
    const std::lock_guard lock(mMutex);
    return mLastRequest;
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
