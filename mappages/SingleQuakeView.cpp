#include "mappages/SingleQuakeView.h"

#include <utility>

#include "platform/RunLoop.h"
#include "platform/WebView.h"
#include "platform/portable/NotificationCenter.h"
#include "quakes/CQuakeList.h"

namespace {

constexpr int kQuakesToKeep = 10;
constexpr double kWebViewOverhang = 10;  // points past the left and top edges

}  // namespace

SingleQuakeView::~SingleQuakeView() { platform::NotificationCenter::removeObserver(this); }

SingleQuakeView* SingleQuakeView::initWithFrame(const platform::Rect& frame) {
    if (!View::initWithFrame(frame)) return nullptr;
    mWebView = nullptr;
    mPageIsComplete = false;
    mMapsPageWriter = std::make_unique<MapsPageWriter>();
    CQuakeList::Instance()->KeepBiggestQuakes(kQuakesToKeep);
    return this;
}

void SingleQuakeView::createWebView() {
    platform::Rect frame = bounds();
    frame.x -= kWebViewOverhang;
    frame.width += kWebViewOverhang;
    frame.height += kWebViewOverhang;

    auto webView = std::make_unique<platform::WebView>();
    webView->initWithFrame(frame, "mainFrame", "mainGroup");
    mWebView = webView.get();
    addSubview(std::move(webView));
    mWebView->setAllowsScrolling(false);
}

void SingleQuakeView::loadNextPage() {
    mPageIsComplete = false;
    platform::NotificationCenter::addObserver(this, platform::WebViewProgressFinishedNotification,
                                              [this] { progressFinished(); });
    if (platform::RunLoop::isStopping()) return;  // a new web view would delay the end
    if (!mWebView) createWebView();

    const CQuakeEvent* const quake = CQuakeList::Instance()->GetNextQuake();
    if (!quake) return;
    // Both views write the same file. The web view takes the page from it at once, so a page that is still
    // loading stays this view's own when the other view writes the next one.
    mMapsPageWriter->writeForEvent(quake, mWebView->bounds().size());
    mWebView->loadRequest({.url = mMapsPageWriter->locationOfTempPage(),
                           .cachePolicy = platform::NSURLRequestUseProtocolCachePolicy,
                           .timeoutInterval = 0});
}

void SingleQuakeView::progressFinished() { mPageIsComplete = true; }
