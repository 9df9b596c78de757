#pragma once

#include <memory>
#include <string>

#include "platform/portable/View.h"

namespace platform {

// Posted by any web view when a load has finished, whether or not it succeeded.
inline constexpr char WebViewProgressFinishedNotification[] = "WebViewProgressFinishedNotification";

inline constexpr int NSURLRequestUseProtocolCachePolicy = 0;

struct URLRequest {
    std::string url;  // a plain path names a local file
    int cachePolicy = NSURLRequestUseProtocolCachePolicy;
    double timeoutInterval = 0;  // seconds
};

// Shows one local page. It loads nothing but that page and the bundle's resources.
class WebView : public View {
  public:
    WebView();
    ~WebView() override;

    // Returns this view, or null where View::initWithFrame does.
    WebView* initWithFrame(const Rect& frame, const std::string& frameName, const std::string& groupName);

    void setAllowsScrolling(bool allows);

    // Reads the page from disk and starts to load it. Returns at once; WebViewProgressFinishedNotification
    // reports the end. A page that cannot be read loads nothing and posts nothing.
    void loadRequest(const URLRequest& request);

    void drawRect(const Rect& rect) override;
    void frameChanged() override;
    // Sends the page the event "viewshown" once it has appeared on the screen.
    void fadeEnded(bool isVisible) override;

    class Backing;  // belongs to the desktop
    Backing& backing() { return *mBacking; }

  private:
    std::unique_ptr<Backing> mBacking;
};

}  // namespace platform
