#include "tests/standins/Desktop.h"

#include <algorithm>
#include <climits>
#include <cstdlib>
#include <filesystem>
#include <utility>

#include "platform/Bundle.h"
#include "platform/Clock.h"
#include "platform/Files.h"
#include "platform/Log.h"
#include "platform/RunLoop.h"
#include "platform/Timer.h"
#include "platform/portable/View.h"

using standins::desktop;

namespace platform {

void standardAlert(AlertType type, const std::string& text, const std::string& explanation) {
    desktop.alerts.push_back({type, text, explanation});
}

void beep() { ++desktop.beeps; }
void debugger() { ++desktop.debuggerStops; }
void debugStr(const std::string& text) { desktop.debugTexts.push_back(text); }

std::string bundlePath() { return std::filesystem::path(TEST_DATA) / desktop.bundle; }
std::string bundleIdentifier() { return "org.tellmar.TellmarScreenSaver"; }

std::string pathForResource(const std::string& name) {
    return desktop.resources.contains(name) ? bundlePath() + "/resources/" + name : "";
}

Canvas::Canvas(std::unique_ptr<Backing> backing) : mBacking(std::move(backing)) {}
Canvas::~Canvas() = default;

void Canvas::fillRect(const Rect& rect, const Color&) { desktop.drawings.push_back({"fill", rect}); }

Image* Canvas::loadImage(const std::string& path) {
    return path.empty() ? nullptr : &desktop.images.emplace_back(Image{path});
}

Size Canvas::imageSize(const Image*) { return {600, 400}; }

void Canvas::drawImageAtPoint(Image* image, const Point& lowerLeft, CompositingOperation operation,
                              double fraction) {
    drawImageInRect(image, {lowerLeft.x, lowerLeft.y, 0, 0}, operation, fraction);
}

void Canvas::drawImageInRect(Image* image, const Rect& rect, CompositingOperation, double) {
    desktop.drawings.push_back({image->path, rect});
}

void Canvas::drawTextAtPoint(const std::string& text, const Point& lowerLeft,
                             const TextAttributes& attributes) {
    drawTextInRect(text, {lowerLeft.x, lowerLeft.y, 0, 0}, attributes);
}

void Canvas::drawTextInRect(const std::string& text, const Rect& rect, const TextAttributes&) {
    desktop.drawings.push_back({text, rect});
}

std::time_t currentTime() { return desktop.now; }
long long monotonicMicroseconds() { return desktop.monotonicMicroseconds; }

void log(const std::string& line) { desktop.logLines.push_back(line); }
void trace(const std::string& line) { desktop.traceLines.push_back(line); }

std::tm localTime(std::time_t time) {
    setenv("TZ", desktop.zone.c_str(), 1);
    tzset();
    std::tm local{};
    localtime_r(&time, &local);
    return local;
}

// The body reaches a sink in pieces, as from a wire.
HTTPResponse get(HTTPRequest request) {
    desktop.requests.push_back(request);
    HTTPResponse response = desktop.service(request);
    if (response.errorCode != 0 || !request.sink) return response;
    for (std::size_t at = 0; at < response.body.size(); at += 50)
        if (!request.sink(response.body.substr(at, 50))) response.errorCode = coreFoundationUnknownErr;
    response.body.clear();
    return response;
}

class HTTPTransfer::Transfer : public Timer {
    using Timer::Timer;
};

HTTPTransfer::HTTPTransfer(HTTPRequest request, Handler handler)
    : mTransfer(std::make_unique<Transfer>(desktop.serviceMilliseconds, [=] { handler(get(request)); })) {}
HTTPTransfer::~HTTPTransfer() = default;

struct Timer::Source {};

Timer::Timer(int milliseconds, std::function<void()> function) : mSource(std::make_unique<Source>()) {
    const long long time = desktop.monotonicMicroseconds + 1000LL * milliseconds;
    desktop.timers.insert({time, {mSource.get(), std::move(function)}});
}
Timer::~Timer() {
    std::erase_if(desktop.timers, [this](const auto& each) { return each.second.first == mSource.get(); });
}

void RunLoop::runUntil(const std::function<bool()>& done) { runUntil(done, INT_MAX); }

// Time passes from one timer to the next.
bool RunLoop::runUntil(const std::function<bool()>& done, int milliseconds) {
    const long long end = desktop.monotonicMicroseconds + 1000LL * milliseconds;
    while (!done() && !desktop.isStopping) {
        const auto next = desktop.timers.begin();
        const bool isDue = next != desktop.timers.end() && next->first <= end;
        desktop.monotonicMicroseconds = std::max(desktop.monotonicMicroseconds, isDue ? next->first : end);
        if (!isDue) return false;
        const auto function = std::move(next->second.second);
        desktop.timers.erase(next);
        function();
    }
    return done();
}

void RunLoop::runFor(int milliseconds) {
    runUntil([] { return false; }, milliseconds);
    if (desktop.whileWaiting) desktop.whileWaiting();
}

bool RunLoop::isStopping() { return desktop.isStopping; }

// One lock for all paths, which another process holds or not.
struct AdvisoryLock::Descriptor {};

AdvisoryLock::AdvisoryLock(const std::string&) {}
AdvisoryLock::~AdvisoryLock() = default;

AdvisoryLock::State AdvisoryLock::tryToLock() { return desktop.lock; }
AdvisoryLock::State AdvisoryLock::waitAndLock() { return desktop.lock; }
std::string AdvisoryLock::note() const { return desktop.lockNote; }
void AdvisoryLock::setNote(const std::string& text) { desktop.lockNote = text; }

int intValue(const Slider* slider) { return slider->value; }

bool loadNibNamed(const std::string& name, const SheetConnections& owner) {
    if (name != "ConfigPanel") return false;
    ++desktop.sheetLoads;
    owner.configPanel = &desktop.panel;
    owner.rateSlider = &desktop.rateSlider;
    desktop.ok = owner.closeSheetSave;
    desktop.cancel = owner.closeSheetCancel;
    return true;
}

void endSheet(Panel* panel) { desktop.sheetEnds += panel == &desktop.panel; }

SystemNames systemNames() { return {"System", "node", "1.2.3", "hardware"}; }
std::int32_t systemVersion() { return desktop.systemVersion; }
std::int32_t processorClock() { return 1'600'000'000; }
std::string machineName() { return desktop.machineName; }
std::string processName() { return desktop.processName; }
std::vector<Processor> processors() { return desktop.processors; }

ViewAnimation::ViewAnimation(std::vector<ViewAnimationDescription> descriptions)
    : mDescriptions(descriptions) {}
ViewAnimation::~ViewAnimation() = default;

void ViewAnimation::setAnimationBlockingMode(int) {}
void ViewAnimation::setDuration(double seconds) { mDuration = seconds; }

void ViewAnimation::startAnimation() {
    standins::Fade fade{.seconds = mDuration};
    for (const auto& [view, endFrame, effect] : mDescriptions) {
        (effect == NSViewAnimationFadeInEffect ? fade.in : fade.out) = view;
        view->setHidden(effect == NSViewAnimationFadeOutEffect);
        view->setFrame(endFrame);
    }
    desktop.fades.push_back(fade);
}

void ViewAnimation::stopAnimation() { ++desktop.fadesStopped; }

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
