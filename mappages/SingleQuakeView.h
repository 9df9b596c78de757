#pragma once

#include <memory>

#include "mappages/MapsPageWriter.h"
#include "platform/portable/View.h"

namespace platform {
class WebView;
}

// Shows one quake's map page, in a web view that covers it.
class SingleQuakeView : public platform::View {
  public:
    ~SingleQuakeView() override;

    // Cuts the shared quake list down to its biggest quakes; the first call in the process fetches the feed
    // and blocks. Returns this view, or null where View::initWithFrame does.
    SingleQuakeView* initWithFrame(const platform::Rect& frame);

    void createWebView();

    // Starts to load the page of the next quake and returns at once. Without a quake nothing is loaded.
    void loadNextPage();

    // Whether any web view of the process has finished a load since the last loadNextPage.
    bool pageIsComplete() const { return mPageIsComplete; }

    void progressFinished();

  private:
    platform::WebView* mWebView = nullptr;  // one of the subviews
    std::unique_ptr<MapsPageWriter> mMapsPageWriter;
    bool mPageIsComplete = false;
};
