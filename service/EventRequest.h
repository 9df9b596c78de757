#pragma once

#include <functional>
#include <memory>
#include <string>

#include "platform/HTTPTransfer.h"
#include "platform/Timer.h"
#include "platform/URLLoading.h"

class EventAnswer;

// Sent by a service with an answer, and back to it later to ask whether that answer still holds. One line
// each; empty if not sent.
struct Validators {
    std::string etag;
    std::string lastModified;
};

struct EventReply {
    platform::LoadOutcome outcome{};
    bool isUnchanged = false;  // the answer that the validators came with still holds
    std::string document{};    // QuakeML 1.0.1
    Validators validators{};
};

// Asks an event service and translates its answer as it arrives, while the main loop runs. An answer may have
// no events. If the service is busy or fails, asks once more after a pause of at most two seconds.
class EventRequest {
  public:
    using Handler = std::function<void(EventReply reply)>;

    // The main loop calls handler once, unless it is stopped or this is destroyed before. The handler may
    // destroy this.
    EventRequest(std::string url, Validators known, Handler handler);
    ~EventRequest();

  private:
    void ask();
    void take(const platform::HTTPResponse& response);
    bool isConditional() const { return !mKnown.etag.empty() || !mKnown.lastModified.empty(); }

    std::string mUrl;
    Validators mKnown;
    Handler mHandler;
    bool mHasPaused = false;
    std::unique_ptr<EventAnswer> mAnswer;
    std::unique_ptr<platform::HTTPTransfer> mTransfer;
    std::unique_ptr<platform::Timer> mPause;
};
