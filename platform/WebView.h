#pragma once

#include <memory>
#include <string>

#include "platform/portable/View.h"

namespace platform {

// The notification that any web view posts when a load has finished, however it went.
inline constexpr char WebViewProgressFinishedNotification[] = "WebViewProgressFinishedNotification";

inline constexpr int NSURLRequestUseProtocolCachePolicy = 0;

struct URLRequest {
    std::string url;  // a plain path names a local file
    int cachePolicy = NSURLRequestUseProtocolCachePolicy;
    double timeoutInterval = 0;  // seconds
};

// Shows one local page. Nothing but that page and the bundle's resources ever loads in it.
class WebView : public View {
  public:
    WebView();
    ~WebView() override;

    // Returns this view, or null where View::initWithFrame does.
    WebView* initWithFrame(const Rect& frame, const std::string& frameName, const std::string& groupName);

    void setAllowsScrolling(bool allows);

    // Takes the page as it lies on disk now and starts to load it. Returns at once; the end is told by
    // WebViewProgressFinishedNotification. A page that cannot be read loads nothing and tells nothing.
    void loadRequest(const URLRequest& request);

    void drawRect(const Rect& rect) override;
    void frameChanged() override;
    // Sends the page the event "viewshown" when it has come to the screen.
    void fadeEnded(bool isVisible) override;

    class Backing;  // the desktop's side
    Backing& backing() { return *mBacking; }

  private:
    std::unique_ptr<Backing> mBacking;
};

}  // namespace platform
