#pragma once

#include <ctime>
#include <functional>
#include <list>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "platform/AdvisoryLock.h"
#include "platform/Alert.h"
#include "platform/Canvas.h"
#include "platform/ConfigPanel.h"
#include "platform/HTTPTransfer.h"
#include "platform/SystemInfo.h"
#include "platform/ViewAnimation.h"
#include "platform/WebView.h"

namespace platform {

class Panel {};
class Slider {
  public:
    int value = 0;
};

struct Image {
    std::string path;
};
struct Canvas::Backing {};

// A web view that never loads by itself: tests post the notification when a load is to be over.
struct WebView::Backing {
    struct Load {
        std::string url, page;  // the page as it lay on disk at the request
        bool superviewWasHidden;
    };

    bool allowsScrolling = true;
    std::vector<Load> loads;
};

}  // namespace platform

namespace standins {

struct Alert {
    platform::AlertType type;
    std::string text, explanation;

    bool operator==(const Alert&) const = default;
};

// Something drawn. A point is a rectangle without a size.
struct Drawing {
    std::string what;  // "fill", the text or the image's path
    platform::Rect place;
};

// It is over, and has hidden and shown its views, when its start returns.
struct Fade {
    platform::View *in = nullptr, *out = nullptr;
    double seconds;

    bool operator==(const Fade&) const = default;
};

// All that the core sees of a desktop, and what it has done there.
struct Desktop {
    std::vector<Alert> alerts;
    std::vector<std::string> debugTexts, logLines, traceLines;
    int beeps = 0, debuggerStops = 0;

    std::string bundle = "Tellmar.saver";  // seen from the tests' data
    std::set<std::string> resources{"map.html", "google_maps_nz.png", "google_maps_nz_pre.png"};

    std::time_t now = 1236042309;  // 2009-03-03T01:05:09Z
    // New Zealand's rules, written out so that no zone database is needed.
    std::string zone = "NZST-12NZDT,M9.5.0,M4.1.0/3";

    std::int32_t systemVersion = 0x1049;
    std::string machineName = "Model 7", processName = "Tellmar Tests";
    std::vector<platform::Processor> processors = {{7, 3}, {18, 10}};

    // The network, which cannot be reached until there is another service.
    std::function<platform::HTTPResponse(const platform::HTTPRequest&)> service = [](const auto&) {
        return platform::HTTPResponse{.errorCode = platform::coreFoundationUnknownErr};
    };
    int serviceMilliseconds = 0;  // that an answer takes
    std::vector<platform::HTTPRequest> requests;

    // Other processes, and what happens while the main loop runs.
    platform::AdvisoryLock::State lock = platform::AdvisoryLock::State::Held;
    std::string lockNote;
    long long monotonicMicroseconds = 1;
    std::multimap<long long, std::pair<const void*, std::function<void()>>> timers;
    std::function<void()> whileWaiting;
    bool isStopping = false;

    // The one sheet there is, and what its buttons do.
    int sheetLoads = 0, sheetEnds = 0;
    platform::Panel panel;
    platform::Slider rateSlider;
    std::function<void(platform::Button*)> ok, cancel;

    std::vector<Drawing> drawings;
    std::list<platform::Image> images;  // every one measures 600 by 400
    std::vector<Fade> fades;
    int fadesStopped = 0;
};

inline Desktop desktop;

}  // namespace standins
