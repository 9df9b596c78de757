#pragma once

#include <memory>
#include <string>

#include "platform/portable/Geometry.h"
#include "tests/map/Picture.h"

class CQuakeEvent;
namespace platform {
class WebView;
}  // namespace platform
typedef struct _WebKitWebView WebKitWebView;

// A page in the module's own web view on $DISPLAY, as large as a quake view of that size gives it. One at a
// time.
class MapPage {
  public:
    explicit MapPage(const platform::Size& screen);
    ~MapPage();
    MapPage(const MapPage&) = delete;
    MapPage& operator=(const MapPage&) = delete;

    // The quake's page, written from the template by the module's writer; each as if shown after the one
    // before, from a fixed time on. Each returns false when the end of the load is not reported in time.
    bool show(const CQuakeEvent& quake);
    bool load(const std::string& path);
    // Waits until a JavaScript expression is true. Returns false when that takes too long.
    bool waitFor(const std::string& expression);

    // How many loads the view has reported, and what it showed at the very moment of the last report.
    int loads() const { return mLoads; }
    const Picture& picture() const { return mPicture; }
    // What the view would show now.
    Picture pictureNow() const;

    // The value of a JavaScript expression, which may await, as JSON; "error" when it throws.
    std::string evaluate(const std::string& expression);

    platform::WebView& view() { return *mView; }
    WebKitWebView* web() { return mWeb; }

  private:
    void setClock(int page);

    std::unique_ptr<platform::WebView> mView;
    WebKitWebView* mWeb = nullptr;  // owned by the view
    Picture mPicture;
    int mLoads = 0, mShown = 0;
};
