#pragma once

#include <httplib.h>

#include <atomic>
#include <functional>
#include <mutex>
#include <string>
#include <thread>

// An HTTP server on this machine's loopback that answers every GET, whatever its path, in one way until told
// another. Until told anything it answers 404.
class LoopbackServer {
  public:
    using Answer = std::function<void(const httplib::Request&, httplib::Response&)>;

    LoopbackServer();
    ~LoopbackServer();
    LoopbackServer(const LoopbackServer&) = delete;
    LoopbackServer& operator=(const LoopbackServer&) = delete;

    std::string url(const std::string& path = "/") const {
        return "http://127.0.0.1:" + std::to_string(mPort) + path;
    }

    // The document goes out packed with gzip to whoever accepts that.
    void serve(const std::string& document, int status = 200);
    void redirectTo(const std::string& location);
    // That many bytes, not packed, in chunks that tell no length.
    void serveBytes(std::size_t count);
    // A few bytes now and then, for ever.
    void trickle();
    void answerWith(Answer answer);

    int requestCount() const { return mRequestCount; }
    httplib::Request lastRequest() const;

  private:
    void handle(const httplib::Request& request, httplib::Response& response);

    httplib::Server mServer;
    int mPort;
    std::thread mThread;
    std::atomic<bool> mLeaving = false;
    std::atomic<int> mRequestCount = 0;
    mutable std::mutex mMutex;  // of what follows
    Answer mAnswer;
    httplib::Request mLastRequest;
};
