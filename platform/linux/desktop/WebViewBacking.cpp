#include "platform/linux/desktop/WebViewBacking.h"

#include <algorithm>
#include <cstdio>
#include <utility>

#include "platform/Log.h"
#include "platform/linux/desktop/WebContext.h"
#include "platform/linux/desktop/Window.h"
#include "platform/portable/NotificationCenter.h"

namespace platform {

namespace {

// What a page may load and run: the bundle's resources, and the call in its own body. It counts in place of
// any policy that a page states itself.
constexpr char kContentPolicy[] =
    "default-src 'none'; script-src-elem bundle:; script-src-attr 'unsafe-inline'; "
    "style-src-elem bundle:; style-src-attr 'unsafe-inline'; img-src bundle:";

// Shown until a page has painted itself, and where it leaves the view free.
constexpr GdkRGBA kBackground{0.04, 0.09, 0.14, 1};

// WebKit's load is finished when nothing is under way, which can be before the modules run; the page's own
// load event comes after them. A page may then give a promise that settles once it has drawn everything. Five
// seconds are the limit for both. By the end of the second frame after that, the picture has come from the
// web process.
constexpr char kPictureIsThere[] = R"js(
    let timer;
    const limit = new Promise(done => { timer = setTimeout(done, 5000); });
    const load = new Promise(done => {
        if (document.readyState === "complete") done();
        addEventListener("load", done);
    });
    const picture = load.then(() => window.tellmarPicture).catch(() => {});
    await Promise.race([picture, limit]);
    clearTimeout(timer);
    for (let frame = 0; frame < 2; ++frame) await new Promise(requestAnimationFrame);
)js";

constexpr char kBackingKey[] = "tellmar-backing";

constexpr int kMaxRestarts = 3;      // of the web process, for one page
constexpr int kRestartPause = 1000;  // milliseconds

WebKitWebView* firstView = nullptr;  // shares its web process with every later one

WebKitWebView* makeView() {
    return WEBKIT_WEB_VIEW(firstView
                               ? g_object_new(WEBKIT_TYPE_WEB_VIEW, "related-view", firstView,
                                              "default-content-security-policy", kContentPolicy, nullptr)
                               : g_object_new(WEBKIT_TYPE_WEB_VIEW, "web-context", webContext(),
                                              "default-content-security-policy", kContentPolicy, nullptr));
}

gboolean refuse() { return TRUE; }

gboolean deny(WebKitWebView*, WebKitPermissionRequest* request) {
    webkit_permission_request_deny(request);
    return TRUE;
}

}  // namespace

WebView::Backing::Backing(WebView& owner)
    : mView(owner), mWindow(gtk_offscreen_window_new()), mWeb(makeView()) {
    if (!firstView) firstView = mWeb;
    gtk_container_add(GTK_CONTAINER(mWindow), GTK_WIDGET(mWeb));
    configure();
    resize(mView.bounds().size());
    connectSignals();
    gtk_widget_show_all(mWindow);
    watchDamage();
}

WebView::Backing::~Backing() {
    stopWaiting();
    if (firstView == mWeb) firstView = nullptr;
    g_signal_handlers_disconnect_by_data(mWeb, this);
    gtk_widget_destroy(mWindow);
}

void WebView::Backing::configure() {
    WebKitSettings* settings = webkit_web_view_get_settings(mWeb);
    webkit_settings_set_enable_webgl(settings, FALSE);
    webkit_settings_set_enable_media(settings, FALSE);
    webkit_settings_set_enable_page_cache(settings, FALSE);
    webkit_settings_set_enable_2d_canvas_acceleration(settings, FALSE);
    webkit_settings_set_allow_modal_dialogs(settings, FALSE);
    webkit_web_view_set_background_color(mWeb, &kBackground);
}

void WebView::Backing::connectSignals() {
    g_signal_connect(mWeb, "load-changed",
                     G_CALLBACK(+[](WebKitWebView*, WebKitLoadEvent event, gpointer self) {
                         static_cast<Backing*>(self)->loadChanged(event);
                     }),
                     this);
    g_signal_connect(mWeb, "decide-policy",
                     G_CALLBACK(+[](WebKitWebView*, WebKitPolicyDecision* decision,
                                    WebKitPolicyDecisionType type, gpointer self) -> gboolean {
                         return static_cast<Backing*>(self)->decidePolicy(decision, type);
                     }),
                     this);
    g_signal_connect_swapped(mWeb, "web-process-terminated",
                             G_CALLBACK(+[](gpointer self) { static_cast<Backing*>(self)->processEnded(); }),
                             this);
    // WebKit, asked to draw before its process has anything to show, waits for that up to half a second. The
    // main loop has better to do, such as hearing of signals.
    g_signal_connect(mWeb, "draw", G_CALLBACK(+[](GtkWidget*, cairo_t*, gpointer self) -> gboolean {
                         return !static_cast<Backing*>(self)->mHasPicture;
                     }),
                     this);
    g_signal_connect(mWeb, "context-menu", G_CALLBACK(refuse), nullptr);
    g_signal_connect(mWeb, "permission-request", G_CALLBACK(deny), nullptr);
}

// Nobody sees the window off the screen, so GTK need not draw it. Only what would be drawn counts.
void WebView::Backing::watchDamage() {
    gdk_window_freeze_updates(gtk_widget_get_window(mWindow));
    g_object_set_data(G_OBJECT(mWeb), kBackingKey, this);
    gdk_window_set_invalidate_handler(gtk_widget_get_window(GTK_WIDGET(mWeb)),
                                      [](GdkWindow* window, cairo_region_t* region) {
                                          gpointer web = nullptr;
                                          gdk_window_get_user_data(window, &web);
                                          const gpointer self = g_object_get_data(G_OBJECT(web), kBackingKey);
                                          static_cast<Backing*>(self)->damaged(region);
                                      });
}

void WebView::Backing::resize(const Size& size) {
    const int width = static_cast<int>(size.width), height = static_cast<int>(size.height);
    gtk_widget_set_size_request(GTK_WIDGET(mWeb), width, height);
    gtk_window_resize(GTK_WINDOW(mWindow), std::max(1, width), std::max(1, height));
    gtk_container_check_resize(GTK_CONTAINER(mWindow));  // now: what has yet to get its size cannot be drawn
}

void WebView::Backing::setScrolls(bool scrolls) {
    WebKitUserContentManager* contents = webkit_web_view_get_user_content_manager(mWeb);
    webkit_user_content_manager_remove_all_style_sheets(contents);
    if (scrolls) return;
    const Handle<WebKitUserStyleSheet, webkit_user_style_sheet_unref> still(webkit_user_style_sheet_new(
        "html, body { overflow: hidden !important; }", WEBKIT_USER_CONTENT_INJECT_TOP_FRAME,
        WEBKIT_USER_STYLE_LEVEL_USER, nullptr, nullptr));
    webkit_user_content_manager_add_style_sheet(contents, still.get());
}

void WebView::Backing::draw(cairo_t* cairo) {
    gdk_cairo_set_source_rgba(cairo, &kBackground);
    cairo_paint(cairo);
    gtk_widget_draw(GTK_WIDGET(mWeb), cairo);
}

void WebView::Backing::setVisible(bool isVisible) {
    const bool hasCome = isVisible && !mIsVisible;
    mIsVisible = isVisible;
    if (hasCome)
        webkit_web_view_evaluate_javascript(mWeb, "dispatchEvent(new Event('viewshown'))", -1, nullptr,
                                            nullptr, nullptr, nullptr, nullptr);
}

void WebView::Backing::load(std::string page, std::string url) {
    mPage = std::move(page);
    mURL = std::move(url);
    mRestarts = 0;
    mRestartTimer.reset();
    load();
}

// The page's own bytes are handed over, not its address: the next page may lie in that file by the time that
// the web process would come to read it.
void WebView::Backing::load() {
    stopWaiting();
    mIsLoading = true;
    mLoadStart = g_get_monotonic_time();
    const Handle<GBytes, g_bytes_unref> bytes(g_bytes_new(mPage.data(), mPage.size()));
    webkit_web_view_load_bytes(mWeb, bytes.get(), "text/html", "UTF-8", mURL.c_str());
}

void WebView::Backing::loadChanged(WebKitLoadEvent event) {
    if (event == WEBKIT_LOAD_FINISHED && mIsLoading) waitForPicture();
}

// A script that cannot run ends the wait too.
void WebView::Backing::waitForPicture() {
    stopWaiting();
    mWaiting.reset(g_cancellable_new());
    webkit_web_view_call_async_javascript_function(
        mWeb, kPictureIsThere, -1, nullptr, nullptr, nullptr, mWaiting.get(),
        [](GObject* source, GAsyncResult* result, gpointer self) {
            GError* error = nullptr;
            JSCValue* value = webkit_web_view_call_async_javascript_function_finish(WEBKIT_WEB_VIEW(source),
                                                                                    result, &error);
            const bool isCancelled = error && g_error_matches(error, G_IO_ERROR, G_IO_ERROR_CANCELLED);
            g_clear_object(&value);
            g_clear_error(&error);
            if (!isCancelled) static_cast<Backing*>(self)->pictureIsThere();
        },
        this);
}

void WebView::Backing::stopWaiting() {
    if (mWaiting) g_cancellable_cancel(mWaiting.get());
    mWaiting.reset();
}

void WebView::Backing::pictureIsThere() {
    mHasPicture = true;
    endLoad();
}

void WebView::Backing::endLoad() {
    mWaiting.reset();
    mIsLoading = false;
    char line[80];
    std::snprintf(line, sizeof line, "page: loaded in %.0f ms",
                  static_cast<double>(g_get_monotonic_time() - mLoadStart) / 1000);
    trace(line);
    NotificationCenter::post(WebViewProgressFinishedNotification);
}

// A page on the screen leads nowhere, not even to its own address, where another one may lie by now.
gboolean WebView::Backing::decidePolicy(WebKitPolicyDecision* decision, WebKitPolicyDecisionType type) {
    if (type == WEBKIT_POLICY_DECISION_TYPE_NEW_WINDOW_ACTION) {
        webkit_policy_decision_ignore(decision);
        return TRUE;
    }
    if (type != WEBKIT_POLICY_DECISION_TYPE_NAVIGATION_ACTION) return FALSE;
    WebKitNavigationAction* action =
        webkit_navigation_policy_decision_get_navigation_action(WEBKIT_NAVIGATION_POLICY_DECISION(decision));
    const char* url = webkit_uri_request_get_uri(webkit_navigation_action_get_request(action));
    if (mIsLoading && url && mURL == url)
        webkit_policy_decision_use(decision);
    else
        webkit_policy_decision_ignore(decision);
    return TRUE;
}

// Starts the web process again with this view's page, a few times: a page that ends it each time stays away.
void WebView::Backing::processEnded() {
    trace("page: the web process ended");
    stopWaiting();
    mHasPicture = false;
    if (mPage.empty() || mRestartTimer) return;
    if (++mRestarts > kMaxRestarts) {
        if (mIsLoading) endLoad();
        return;
    }
    mRestartTimer = std::make_unique<Timer>(kRestartPause, [this] {
        mRestartTimer.reset();
        load();
    });
}

void WebView::Backing::damaged(const cairo_region_t* region) {
    const View* parent = mView.superview();
    if (!parent || parent->isHidden() || !mView.window()) return;
    cairo_rectangle_int_t part;
    cairo_region_get_extents(region, &part);
    mView.window()->setNeedsDisplay(mView, part);
}

}  // namespace platform
