#include "platform/linux/desktop/Window.h"

#include <algorithm>
#include <cstdio>

#include "platform/Log.h"
#include "platform/RunLoop.h"
#include "platform/linux/desktop/CanvasBacking.h"
#include "platform/linux/desktop/CoverWindow.h"
#include "platform/linux/desktop/CrossFade.h"
#include "platform/linux/desktop/HostWindow.h"
#include "platform/linux/desktop/Monitors.h"
#include "platform/linux/desktop/NoticePanel.h"
#include "platform/linux/desktop/ScreenAwake.h"
#include "platform/linux/desktop/ViewPainter.h"

namespace platform {

namespace {

constexpr int kFirstDrawTimeout = 1000;  // milliseconds

Window* currentWindow = nullptr;

using Action = void (*)();

gboolean quitOnKey(GtkWidget*, GdkEventKey* event, gpointer action) {
    const guint key = gdk_keyval_to_lower(event->keyval);
    if (key == GDK_KEY_Escape || key == GDK_KEY_q) reinterpret_cast<Action>(action)();
    return FALSE;
}

void onQuitKey(GtkWidget* window, Action action) {
    g_signal_connect(window, "key-press-event", G_CALLBACK(quitOnKey), reinterpret_cast<gpointer>(action));
}

void hideCursor(GtkWidget* widget) {
    ObjectRef<GdkCursor> none(gdk_cursor_new_for_display(gtk_widget_get_display(widget), GDK_BLANK_CURSOR));
    gdk_window_set_cursor(gtk_widget_get_window(widget), none.get());
}

void reportFadeEnded(View& view, bool isVisible) {
    isVisible = isVisible && !view.isHidden();
    view.fadeEnded(isVisible);
    for (const auto& subview : view.subviews()) reportFadeEnded(*subview, isVisible);
}

}  // namespace

std::unique_ptr<Window> Window::open(const Size& size) {
    GtkWidget* topLevel = gtk_window_new(GTK_WINDOW_TOPLEVEL);
    gtk_window_set_title(GTK_WINDOW(topLevel), "Tellmar");
    gtk_window_set_default_size(GTK_WINDOW(topLevel), static_cast<int>(size.width),
                                static_cast<int>(size.height));
    onQuitKey(topLevel, RunLoop::stop);

    return std::unique_ptr<Window>(new Window(topLevel, true));
}

std::unique_ptr<Window> Window::cover(GdkMonitor* monitor, void (*endAll)()) {
    GtkWidget* topLevel = createCoverWindow(monitor, isActive(monitor));
    onAnyInput(topLevel, endAll);
    return std::unique_ptr<Window>(new Window(topLevel, false));
}

std::unique_ptr<Window> Window::coverAsKiosk(GdkMonitor* monitor, void (*endAll)()) {
    GtkWidget* topLevel = createCoverWindow(monitor, true);
    onQuitKey(topLevel, endAll);
    keepAwakeWhileShown(topLevel);
    return std::unique_ptr<Window>(new Window(topLevel, false));
}

std::unique_ptr<Window> Window::embed(unsigned long hostWindow) {
    ObjectRef<GdkWindow> host = findHostWindow(hostWindow);
    if (!host) {
        char line[48];
        std::snprintf(line, sizeof line, "window 0x%lx does not exist", hostWindow);
        log(line);
        return nullptr;
    }
    std::unique_ptr<Window> window(new Window(gtk_window_new(GTK_WINDOW_POPUP), false));
    window->fillHost(host.get());
    window->mHost = std::move(host);
    return window;
}

Window::Window(GtkWidget* topLevel, bool takesDialogs)
    : mTopLevel(topLevel), mArea(gtk_drawing_area_new()), mTakesDialogs(takesDialogs) {
    gtk_container_add(GTK_CONTAINER(mTopLevel), mArea);
    connectSignals();
    currentWindow = this;
}

Window::~Window() {
    if (currentWindow == this) currentWindow = nullptr;
    if (mTopLevel) {  // off the screen at once: the rest takes longer
        gtk_widget_hide(mTopLevel);
        gdk_display_flush(gtk_widget_get_display(mTopLevel));
    }
    mRoot.reset();
    if (mTopLevel) gtk_widget_destroy(mTopLevel);
    if (mHost) forgetHostWindow(mHost.get());
}

void Window::connectSignals() {
    g_signal_connect(mArea, "draw", G_CALLBACK(+[](GtkWidget*, cairo_t* cairo, gpointer self) -> gboolean {
                         static_cast<Window*>(self)->draw(cairo);
                         return TRUE;
                     }),
                     this);
    g_signal_connect_swapped(mArea, "size-allocate",
                             G_CALLBACK(+[](gpointer self) { static_cast<Window*>(self)->resized(); }), this);
    g_signal_connect_swapped(mTopLevel, "destroy", G_CALLBACK(+[](gpointer self) {
                                 static_cast<Window*>(self)->mTopLevel = nullptr;
                                 RunLoop::stop();
                             }),
                             this);
}

// Makes the pop-up a child of the host's window, which follows that window's size and ends with it.
void Window::fillHost(GdkWindow* host) {
    gtk_widget_realize(mTopLevel);
    GdkWindow* own = gtk_widget_get_window(mTopLevel);
    gdk_window_reparent(own, host, 0, 0);
    followHostWindow(host, [this](const Size& size) {
        gtk_window_resize(GTK_WINDOW(mTopLevel), static_cast<int>(size.width), static_cast<int>(size.height));
    });
}

void Window::layOut(const Size& size) {
    gtk_widget_realize(mArea);
    gtk_widget_show(mArea);
    const GtkAllocation area{0, 0, static_cast<int>(size.width), static_cast<int>(size.height)};
    gtk_widget_size_allocate(mTopLevel, const_cast<GtkAllocation*>(&area));
}

void Window::show() {
    gtk_widget_realize(mArea);  // a preview is painted as soon as it has a size
    gtk_widget_show_all(mTopLevel);
    if (!mTakesDialogs) hideCursor(mTopLevel);
    RunLoop::runUntil([this] { return mIsPainted; }, kFirstDrawTimeout);
    if (!mTopLevel) return;  // closed meanwhile
    gdk_display_flush(gtk_widget_get_display(mArea));
    if (mRoot) reportFadeEnded(*mRoot, true);
}

Window* Window::current() { return currentWindow; }

Size Window::size() const {
    return {static_cast<double>(gtk_widget_get_allocated_width(mArea)),
            static_cast<double>(gtk_widget_get_allocated_height(mArea))};
}

bool Window::isThumbnail() const { return mHost && isPreviewWindow(mHost.get()); }

void Window::setContentView(std::unique_ptr<ScreenSaverView> root) {
    mRoot = std::move(root);
    mRoot->setWindow(this);
    resized();
    setNeedsDisplay();
}

void Window::resized() {
    const Size now = size();
    if (!mRoot || mRoot->bounds().size() == now) return;
    if (mFade) mFade->giveUp();
    mRoot->setFrame({0, 0, now.width, now.height});
    mPreviewPainting.reset();
    if (mResizeHandler) mResizeHandler();
    setNeedsDisplay();
}

void Window::tick() {
    if (!mTopLevel || !gtk_widget_get_realized(mArea)) return;
    if (!mRoot->isPreview()) return mRoot->animateOneFrame();
    SurfaceRef painting = makeSurface(CAIRO_CONTENT_COLOR_ALPHA);
    CairoRef cairo(cairo_create(painting.get()));
    Canvas canvas(makeCanvasBacking(cairo.get(), size().height));
    mRoot->setCanvas(&canvas);
    mRoot->animateOneFrame();
    mRoot->setCanvas(nullptr);
    mPreviewPainting = std::move(painting);
    setNeedsDisplay();
}

void Window::setNeedsDisplay() {
    mHasChanged = true;
    if (mTopLevel && !mFade) gtk_widget_queue_draw(mArea);
}

void Window::setNeedsDisplay(const View& view, const GdkRectangle& part) {
    mHasChanged = true;
    if (!mTopLevel || mFade) return;
    double x = part.x, y = part.y;
    for (const View* each = &view; each->superview(); each = each->superview()) {
        const Rect& frame = each->frame();
        x += frame.x;
        y += each->superview()->bounds().height - (frame.y + frame.height);
    }
    gtk_widget_queue_draw_area(mArea, static_cast<int>(x), static_cast<int>(y), part.width, part.height);
}

void Window::draw(cairo_t* cairo) {
    mIsPainted = true;
    if (mFade)
        mFade->draw(cairo);
    else
        drawContent(cairo);
    if (!mNotice.empty()) drawNoticePanel(cairo, size(), mNotice);
}

void Window::drawContent(cairo_t* cairo) {
    cairo_set_source_rgb(cairo, 0, 0, 0);
    cairo_paint(cairo);
    if (mRoot) paintView(*mRoot, cairo);
    if (!mPreviewPainting) return;
    cairo_set_source_surface(cairo, mPreviewPainting.get(), 0, 0);
    cairo_paint(cairo);
}

SurfaceRef Window::makeSurface(cairo_content_t content) const {
    const Size now = size();
    return SurfaceRef(gdk_window_create_similar_surface(
        gtk_widget_get_window(mArea), content, static_cast<int>(now.width), static_cast<int>(now.height)));
}

SurfaceRef Window::snapshot() {
    SurfaceRef surface = makeSurface(CAIRO_CONTENT_COLOR);
    CairoRef cairo(cairo_create(surface.get()));
    drawContent(cairo.get());
    return surface;
}

void Window::crossFade(double seconds, const std::function<void()>& applyChange) {
    if (!mTopLevel || !gtk_widget_get_mapped(mArea) || RunLoop::isStopping()) return applyChange();

    seconds = std::min(seconds, mLongestFade);
    mFade = std::make_unique<CrossFade>(mArea, snapshot(), seconds);
    applyChange();
    mHasChanged = false;
    mFade->run(snapshot());

    char line[80];
    std::snprintf(line, sizeof line, "fade: %.2f s, %d frames", seconds, mFade->frames());
    trace(line);
    const bool isShown = mFade->isComplete() && !mHasChanged;
    mFade.reset();
    if (!isShown) setNeedsDisplay();
    if (mRoot) reportFadeEnded(*mRoot, true);
}

void Window::showNotice(const std::string& text, const std::string& explanation, double seconds) {
    mNotice = text + "\n\n" + explanation;
    if (mFade) mFade->giveUp();
    gtk_widget_queue_draw(mArea);
    RunLoop::runFor(static_cast<int>(seconds * 1000));
    mNotice.clear();
    setNeedsDisplay();
}

}  // namespace platform
