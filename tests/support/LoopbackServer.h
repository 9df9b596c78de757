#pragma once

#include <httplib.h>

#include <atomic>
#include <functional>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

// An HTTP server on this machine's loopback that answers every GET, whatever its path, in one way until told
// another. Until told anything it answers 404.
class LoopbackServer {
  public:
    using Answer = std::function<void(const httplib::Request&, httplib::Response&)>;

    LoopbackServer();
    ~LoopbackServer();
    LoopbackServer(const LoopbackServer&) = delete;
    LoopbackServer& operator=(const LoopbackServer&) = delete;

    std::string host() const { return "http://127.0.0.1:" + std::to_string(mPort); }
    std::string url(const std::string& path = "/") const { return host() + path; }

    // A document of a text type goes out packed with gzip to whoever accepts that.
    void serve(const std::string& document, const std::string& contentType = "application/xml");
    void serveStatus(int status, const std::string& body = "", const std::string& contentType = "text/html");
    // These statuses one after the other, each a redirection to here if it is one, then the document.
    void serveAfter(const std::vector<int>& statuses, const std::string& document);
    void redirectTo(const std::string& location);
    // The whole length announced, and half of the document sent.
    void cutOff(const std::string& document);
    // That many bytes, not packed; announced, or in chunks that tell no length.
    void serveBytes(std::size_t count, bool announced);
    // The bytes as they are, under the claim that they are gzip.
    void serveAsGzip(const std::string& bytes);
    // A few bytes now and then, for ever.
    void trickle();
    void answerWith(Answer answer);

    int requestCount() const { return mRequestCount; }
    // A header of the latest request; empty when it had none.
    std::string lastHeader(const std::string& name) const;
    // Path and query of the latest request.
    std::string lastTarget() const;

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
