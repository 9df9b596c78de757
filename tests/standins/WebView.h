#pragma once

#include <string>
#include <vector>

#include "platform/WebView.h"

namespace platform {

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
