#include "tests/standins/Desktop.h"

#include <cstdlib>
#include <filesystem>
#include <utility>

#include "platform/Bundle.h"
#include "platform/Clock.h"
#include "platform/Files.h"
#include "platform/Log.h"
#include "platform/ScreenSaverDefaults.h"
#include "platform/StringList.h"
#include "platform/URLLoading.h"
#include "platform/portable/View.h"

using standins::desktop;

namespace platform {

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

int intValue(const Slider* slider) { return slider->value; }

bool loadNibNamed(const std::string& name, const SheetConnections& owner) {
    if (!desktop.hasSheet || name != "ConfigPanel") return false;
    ++desktop.sheetLoads;
    owner.configPanel = &desktop.panel;
    owner.zoomSlider = &desktop.zoomSlider;
    owner.rateSlider = &desktop.rateSlider;
    owner.okButton = &desktop.okButton;
    owner.cancelButton = &desktop.cancelButton;
    desktop.ok = owner.closeSheetSave;
    desktop.cancel = owner.closeSheetCancel;
    return true;
}

void endSheet(Panel* panel) { desktop.sheetEnds += panel == &desktop.panel; }

struct ScreenSaverDefaults::Store {
    std::string module;
    std::map<std::string, int> values;
};

ScreenSaverDefaults ScreenSaverDefaults::defaultsForModuleWithName(const std::string& name) {
    return ScreenSaverDefaults(std::make_unique<Store>(Store{name, desktop.storedDefaults[name]}));
}

ScreenSaverDefaults::ScreenSaverDefaults(std::unique_ptr<Store> store) : mStore(std::move(store)) {}
ScreenSaverDefaults::~ScreenSaverDefaults() = default;

int ScreenSaverDefaults::integerForKey(const std::string& key) const { return mStore->values[key]; }
void ScreenSaverDefaults::setInteger(int value, const std::string& key) { mStore->values[key] = value; }

bool ScreenSaverDefaults::synchronize() {
    desktop.storedDefaults[mStore->module] = mStore->values;
    return true;
}

// One list, 128, with two entries.
std::string stringFromList(short listID, short index) {
    if (listID != 128) return "";
    if (index == 1) return "%s of %d";
    return index == 2 ? std::string(600, 'x') : "";
}

SystemNames systemNames() { return desktop.systemNames; }
std::int32_t systemVersion() { return desktop.systemVersion; }
std::int32_t processorClock() { return desktop.processorClock; }
std::string machineName() { return desktop.machineName; }
std::string processName() { return desktop.processName; }
std::vector<Processor> processors() { return desktop.processors; }

constexpr std::string_view kFileScheme = "file://";

LoadOutcome fetchResource(const std::string& url, std::string& data) {
    desktop.asked.push_back(url);
    const std::string path = pathOfFileURL(url);
    if (path.empty()) data = desktop.answerToAll.value_or("");
    const bool isLoaded = path.empty() ? desktop.answerToAll.has_value() : readFile(path, data);
    return {isLoaded ? 0 : coreFoundationUnknownErr, "unreachable", {}};
}

bool loadResource(const std::string& url, std::string& data, int& errorCode) {
    errorCode = fetchResource(url, data).errorCode;
    return errorCode == 0;
}

bool writeResource(const std::string& url, const std::string& data, int& errorCode) {
    const bool isWritten = !pathOfFileURL(url).empty() && writeFileAtomically(pathOfFileURL(url), data);
    errorCode = isWritten ? 0 : coreFoundationUnknownErr;
    return isWritten;
}

std::string fileURLWithPath(const std::string& path) { return std::string(kFileScheme) + path; }

std::string pathOfFileURL(const std::string& url) {
    return url.starts_with(kFileScheme) ? url.substr(kFileScheme.size()) : "";
}

ViewAnimation::ViewAnimation(std::vector<ViewAnimationDescription> descriptions)
    : mDescriptions(descriptions) {
    ++desktop.fadesAlive;
}

ViewAnimation::~ViewAnimation() { --desktop.fadesAlive; }

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
