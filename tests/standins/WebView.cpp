#include "tests/standins/WebView.h"

#include "platform/Files.h"

namespace platform {

WebView::WebView() : mBacking(std::make_unique<Backing>()) {}
WebView::~WebView() = default;

WebView* WebView::initWithFrame(const Rect& frame, const std::string&, const std::string&) {
    return View::initWithFrame(frame) ? this : nullptr;
}

void WebView::setAllowsScrolling(bool allows) { mBacking->allowsScrolling = allows; }

void WebView::loadRequest(const URLRequest& request) {
    std::string page;
    readFile(request.url, page);
    mBacking->loads.push_back({request.url, page, superview()->isHidden()});
}

void WebView::drawRect(const Rect&) {}
void WebView::frameChanged() {}

void WebView::fadeEnded(bool) {}

}  // namespace platform
