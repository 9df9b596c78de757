#pragma once

#include <memory>
#include <string>
#include <vector>

#include "platform/linux/desktop/CairoHandles.h"
#include "platform/portable/Geometry.h"
#include "tests/program/Picture.h"

class CQuakeEvent;
namespace platform {
class View;
class WebView;
}  // namespace platform
typedef struct _WebKitWebView WebKitWebView;

// A page in the module's own web view, as large as a quake view of that size gives it. For one at a time.
class MapPage {
  public:
    // Before the first page, and once.
    static void useDisplay(const std::string& name);

    explicit MapPage(const platform::Size& screen);
    ~MapPage();
    MapPage(const MapPage&) = delete;
    MapPage& operator=(const MapPage&) = delete;

    // The quake's page, written from the template by the module's writer. Each returns false when no end of
    // the load is told, and takes the picture at the very moment that it is told.
    bool show(const CQuakeEvent& quake);
    bool load(const std::string& path);

    // Waits until a JavaScript expression is true. Returns false when that takes too long.
    bool waitFor(const std::string& expression);
    // Waits until what the page has drawn last can be seen. Returns false when that takes too long.
    bool settle();

    const Picture& picture() const { return mPicture; }
    // What the view would show now.
    Picture pictureNow() const;
    // The page alone over nothing, with its transparency, as PNG.
    bool writeSnapshot(const std::string& path);

    // The value of a JavaScript expression as JSON; "error" when it throws.
    std::string evaluate(const std::string& expression);
    // The addresses asked for since the view was made.
    const std::vector<std::string>& requests() const { return mRequests; }

    platform::WebView& view() { return *mView; }

  private:
    platform::SurfaceRef draw() const;

    std::unique_ptr<platform::WebView> mView;
    WebKitWebView* mWeb = nullptr;  // owned by the view
    std::vector<std::string> mRequests;
    platform::SurfaceRef mSurface;
    Picture mPicture;
    bool mIsFinished = false;
};
