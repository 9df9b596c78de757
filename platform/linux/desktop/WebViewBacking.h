#pragma once

#include <webkit2/webkit2.h>

#include <memory>
#include <string>

#include "platform/Timer.h"
#include "platform/WebView.h"
#include "platform/linux/Handles.h"

namespace platform {

// A WebKit view in a window off the screen, from which its owner takes its picture: so one window can show
// several, under, over and blended with other views.
class WebView::Backing {
  public:
    explicit Backing(WebView& owner);
    ~Backing();
    Backing(const Backing&) = delete;
    Backing& operator=(const Backing&) = delete;

    void resize(const Size& size);
    void setScrolls(bool scrolls);
    // Starts to load the page as if it came from that address.
    void load(std::string page, std::string url);
    void setVisible(bool isVisible);
    void draw(cairo_t* cairo);

  private:
    void configure();
    void connectSignals();
    void watchDamage();
    void load();
    void loadChanged(WebKitLoadEvent event);
    void waitForPicture();
    void stopWaiting();
    void pictureIsThere();
    void endLoad();
    gboolean decidePolicy(WebKitPolicyDecision* decision, WebKitPolicyDecisionType type);
    void processEnded();
    void damaged(const cairo_region_t* region);

    WebView& mView;
    GtkWidget* mWindow;   // owned
    WebKitWebView* mWeb;  // owned by mWindow
    std::string mPage, mURL;
    gint64 mLoadStart = 0;  // microseconds
    int mRestarts = 0;
    std::unique_ptr<Timer> mRestartTimer;  // null when no restart is due
    bool mIsLoading = false;               // until the end of the load is reported
    bool mHasPicture = false;              // of any page
    bool mIsVisible = false;               // when the last fade ended
    ObjectRef<GCancellable> mWaiting;      // for the picture of a page; null when none is expected
};

}  // namespace platform
