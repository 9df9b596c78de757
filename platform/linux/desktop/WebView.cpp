#include "platform/WebView.h"

#include "platform/Files.h"
#include "platform/URLLoading.h"
#include "platform/linux/desktop/CanvasBacking.h"
#include "platform/linux/desktop/WebViewBacking.h"

namespace platform {

WebView::WebView() = default;
WebView::~WebView() = default;

WebView* WebView::initWithFrame(const Rect& frame, const std::string&, const std::string&) {
    if (!View::initWithFrame(frame)) return nullptr;
    mBacking = std::make_unique<Backing>(*this);
    return this;
}

void WebView::setAllowsScrolling(bool allows) { mBacking->setScrolls(allows); }

void WebView::loadRequest(const URLRequest& request) {
    const bool isURL = request.url.find("://") != std::string::npos;
    const std::string path = isURL ? pathOfFileURL(request.url) : request.url;
    std::string page;
    if (readFile(path, page)) mBacking->load(std::move(page), fileURLWithPath(path));
}

void WebView::drawRect(const Rect&) { mBacking->draw(canvas().backing().cairo); }

void WebView::fadeEnded(bool isVisible) { mBacking->setVisible(isVisible); }

void WebView::frameChanged() { mBacking->resize(bounds().size()); }

}  // namespace platform
