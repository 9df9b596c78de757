#include "tests/standins/WebView.h"

#include <utility>

#include "platform/Files.h"

namespace platform {

WebView::WebView() : mBacking(std::make_unique<Backing>()) {}

WebView::~WebView() = default;

WebView* WebView::initWithFrame(const Rect& frame, const std::string& frameName,
                                const std::string& groupName) {
    if (!View::initWithFrame(frame)) return nullptr;
    mBacking->frameName = frameName;
    mBacking->groupName = groupName;
    return this;
}

void WebView::setAllowsScrolling(bool allows) { mBacking->allowsScrolling = allows; }

void WebView::loadRequest(const URLRequest& request) {
    std::string page;
    readFile(request.url, page);
    mBacking->loads.push_back({request, std::move(page), superview() && superview()->isHidden()});
}

void WebView::drawRect(const Rect&) {}

void WebView::frameChanged() {}

void WebView::fadeEnded(bool) {}

}  // namespace platform
