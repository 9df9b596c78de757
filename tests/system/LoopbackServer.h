#pragma once

#include <httplib.h>

#include <functional>
#include <string>
#include <thread>

// An HTTP server on this machine's loopback that answers every GET alike, whatever its path: 404 until a test
// says otherwise. A test changes the answer between two requests only, so nothing is locked.
class LoopbackServer {
  public:
    using Answer = std::function<void(const httplib::Request&, httplib::Response&)>;

    LoopbackServer() {
        serve("", 404);
        mServer.Get(".*", [this](const auto& request, auto& response) {
            lastRequest = request;
            answer(request, response);
        });
        mPort = mServer.bind_to_any_port("127.0.0.1");
        mThread = std::thread([this] { mServer.listen_after_bind(); });
        while (!mServer.is_running()) std::this_thread::yield();
    }
    ~LoopbackServer() {
        mServer.stop();
        mThread.join();
    }

    std::string url(const std::string& path = "/") const {
        return "http://127.0.0.1:" + std::to_string(mPort) + path;
    }

    // The document goes out packed with gzip to whoever accepts that.
    void serve(const std::string& document, int status = 200) {
        answer = [=](const auto&, auto& response) {
            response.status = status;
            response.set_content(document, "application/xml");
        };
    }
    // Bytes as given, in chunks that state no length. The function writes the next ones, or ends the answer.
    void serveChunks(httplib::ContentProviderWithoutLength next) {
        answer = [=](const auto&, auto& response) {
            response.set_chunked_content_provider("application/octet-stream", next);
        };
    }

    Answer answer;
    httplib::Request lastRequest;

  private:
    httplib::Server mServer;
    int mPort;
    std::thread mThread;
};
