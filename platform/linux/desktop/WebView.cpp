#include "platform/WebView.h"

#include <webkit2/webkit2.h>

#include <cstdio>

#include "platform/Files.h"
#include "platform/NotificationCenter.h"
#include "platform/URLLoading.h"
#include "platform/linux/desktop/CanvasBacking.h"
#include "platform/linux/desktop/Handles.h"
#include "platform/linux/desktop/WebContext.h"
#include "platform/linux/desktop/Window.h"
#include "platform/linux/system/Trace.h"

namespace platform {

namespace {

// What a page may load and run: the bundle's resources, and the call in its own body. It counts in place of
// any policy that a page states itself.
constexpr char kContentPolicy[] =
    "default-src 'none'; script-src-elem bundle:; script-src-attr 'unsafe-inline'; "
    "style-src-elem bundle:; style-src-attr 'unsafe-inline'; img-src bundle:";

// Shown until a page has painted itself, and where it leaves the view free.
constexpr GdkRGBA kBackground{0.04, 0.09, 0.14, 1};

// A load is finished for WebKit before the picture of the page has come from the web process. By the end of
// the second frame it has.
constexpr char kTwoFrames[] =
    "return new Promise(done => requestAnimationFrame(() => requestAnimationFrame(() => done())));";

constexpr int kMostRestarts = 3;       // of the web process, for one page
constexpr guint kRestartPause = 1000;  // milliseconds

gboolean refuse() { return TRUE; }

}  // namespace

// A WebKit view in a window off the screen, from which drawRect takes its picture: so one window can show
// several, under, over and blended with other views.
struct WebView::Backing {
    explicit Backing(WebView& owner);
    ~Backing();
    Backing(const Backing&) = delete;
    Backing& operator=(const Backing&) = delete;

    void connectSignals();
    void resize(const Size& size);
    void load();
    void loadChanged(WebKitLoadEvent event);
    void waitForPicture();
    void pictureIsThere();
    gboolean decidePolicy(WebKitPolicyDecision* decision, WebKitPolicyDecisionType type);
    void processEnded();

    WebView& view;
    GtkWidget* window;   // owned
    WebKitWebView* web;  // owned by window
    std::string page, pageURL;
    gint64 loadStart = 0;  // microseconds
    int restarts = 0;
    guint restartTimer = 0;
    bool isVisible = false;           // when the last fade ended
    ObjectRef<GCancellable> waiting;  // for the picture of a page; null when none is expected

    static WebKitWebView* relatedView;  // shares its web process with every later one
};

WebKitWebView* WebView::Backing::relatedView = nullptr;

WebView::Backing::Backing(WebView& owner)
    : view(owner),
      window(gtk_offscreen_window_new()),
      web(WEBKIT_WEB_VIEW(relatedView
                              ? g_object_new(WEBKIT_TYPE_WEB_VIEW, "related-view", relatedView,
                                             "default-content-security-policy", kContentPolicy, nullptr)
                              : g_object_new(WEBKIT_TYPE_WEB_VIEW, "web-context", webContext(),
                                             "default-content-security-policy", kContentPolicy, nullptr))) {
    if (!relatedView) relatedView = web;
    WebKitSettings* settings = webkit_web_view_get_settings(web);
    webkit_settings_set_enable_webgl(settings, FALSE);
    webkit_settings_set_enable_media(settings, FALSE);
    webkit_settings_set_enable_page_cache(settings, FALSE);
    webkit_settings_set_enable_2d_canvas_acceleration(settings, FALSE);
    webkit_settings_set_allow_modal_dialogs(settings, FALSE);
    webkit_web_view_set_background_color(web, &kBackground);
    gtk_container_add(GTK_CONTAINER(window), GTK_WIDGET(web));
    resize(view.bounds().size());
    connectSignals();
    gtk_widget_show_all(window);
}

WebView::Backing::~Backing() {
    if (restartTimer) g_source_remove(restartTimer);
    if (waiting) g_cancellable_cancel(waiting.get());
    if (relatedView == web) relatedView = nullptr;
    g_signal_handlers_disconnect_by_data(web, this);
    gtk_widget_destroy(window);
}

void WebView::Backing::connectSignals() {
    g_signal_connect(web, "load-changed",
                     G_CALLBACK(+[](WebKitWebView*, WebKitLoadEvent event, gpointer self) {
                         static_cast<Backing*>(self)->loadChanged(event);
                     }),
                     this);
    g_signal_connect(web, "decide-policy",
                     G_CALLBACK(+[](WebKitWebView*, WebKitPolicyDecision* decision,
                                    WebKitPolicyDecisionType type, gpointer self) -> gboolean {
                         return static_cast<Backing*>(self)->decidePolicy(decision, type);
                     }),
                     this);
    g_signal_connect_swapped(web, "web-process-terminated",
                             G_CALLBACK(+[](gpointer self) { static_cast<Backing*>(self)->processEnded(); }),
                             this);
    g_signal_connect(web, "context-menu", G_CALLBACK(refuse), nullptr);
    g_signal_connect(web, "permission-request",
                     G_CALLBACK(+[](WebKitWebView*, WebKitPermissionRequest* request, gpointer) -> gboolean {
                         webkit_permission_request_deny(request);
                         return TRUE;
                     }),
                     nullptr);
    g_signal_connect_swapped(
        window, "damage-event", G_CALLBACK(+[](gpointer self) -> gboolean {
            WebView& owner = static_cast<Backing*>(self)->view;
            Window* shown = owner.superview() && !owner.superview()->isHidden() ? owner.window() : nullptr;
            if (shown) shown->setNeedsDisplay();
            return FALSE;
        }),
        this);
}

void WebView::Backing::resize(const Size& size) {
    gtk_widget_set_size_request(GTK_WIDGET(web), static_cast<int>(size.width), static_cast<int>(size.height));
    gtk_window_resize(GTK_WINDOW(window), std::max(1, static_cast<int>(size.width)),
                      std::max(1, static_cast<int>(size.height)));
}

// The page's own bytes are handed over, not its address: the next page may lie in that file by the time that
// the web process would come to read it.
void WebView::Backing::load() {
    loadStart = g_get_monotonic_time();
    GBytes* bytes = g_bytes_new(page.data(), page.size());
    webkit_web_view_load_bytes(web, bytes, "text/html", "UTF-8", pageURL.c_str());
    g_bytes_unref(bytes);
}

void WebView::Backing::loadChanged(WebKitLoadEvent event) {
    if (event == WEBKIT_LOAD_FINISHED && !page.empty()) waitForPicture();
}

// A script that cannot run, for want of a process or since the next page comes, ends the wait too.
void WebView::Backing::waitForPicture() {
    if (waiting) g_cancellable_cancel(waiting.get());
    waiting.reset(g_cancellable_new());
    webkit_web_view_call_async_javascript_function(
        web, kTwoFrames, -1, nullptr, nullptr, nullptr, waiting.get(),
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

void WebView::Backing::pictureIsThere() {
    waiting.reset();
    char line[80];
    std::snprintf(line, sizeof line, "page: loaded in %.0f ms",
                  static_cast<double>(g_get_monotonic_time() - loadStart) / 1000);
    trace(line);
    NotificationCenter::post(WebViewProgressFinishedNotification);
}

gboolean WebView::Backing::decidePolicy(WebKitPolicyDecision* decision, WebKitPolicyDecisionType type) {
    if (type == WEBKIT_POLICY_DECISION_TYPE_NEW_WINDOW_ACTION) {
        webkit_policy_decision_ignore(decision);
        return TRUE;
    }
    if (type != WEBKIT_POLICY_DECISION_TYPE_NAVIGATION_ACTION) return FALSE;
    WebKitNavigationAction* action =
        webkit_navigation_policy_decision_get_navigation_action(WEBKIT_NAVIGATION_POLICY_DECISION(decision));
    const char* url = webkit_uri_request_get_uri(webkit_navigation_action_get_request(action));
    if (url && pageURL == url)
        webkit_policy_decision_use(decision);
    else
        webkit_policy_decision_ignore(decision);
    return TRUE;
}

// Starts the web process again with this view's page, a few times: a page that ends it each time stays away.
void WebView::Backing::processEnded() {
    trace("page: the web process ended");
    if (page.empty() || restartTimer || ++restarts > kMostRestarts) return;
    restartTimer = g_timeout_add(
        kRestartPause,
        [](gpointer self) -> gboolean {
            static_cast<Backing*>(self)->restartTimer = 0;
            static_cast<Backing*>(self)->load();
            return G_SOURCE_REMOVE;
        },
        this);
}

WebView::WebView() = default;
WebView::~WebView() = default;

WebView* WebView::initWithFrame(const Rect& frame, const std::string&, const std::string&) {
    if (!View::initWithFrame(frame)) return nullptr;
    mBacking = std::make_unique<Backing>(*this);
    return this;
}

void WebView::setAllowsScrolling(bool allows) {
    WebKitUserContentManager* contents = webkit_web_view_get_user_content_manager(mBacking->web);
    webkit_user_content_manager_remove_all_style_sheets(contents);
    if (allows) return;
    WebKitUserStyleSheet* still = webkit_user_style_sheet_new("html, body { overflow: hidden !important; }",
                                                              WEBKIT_USER_CONTENT_INJECT_TOP_FRAME,
                                                              WEBKIT_USER_STYLE_LEVEL_USER, nullptr, nullptr);
    webkit_user_content_manager_add_style_sheet(contents, still);
    webkit_user_style_sheet_unref(still);
}

void WebView::loadRequest(const URLRequest& request) {
    const bool isURL = request.url.find("://") != std::string::npos;
    const std::string path = isURL ? pathOfFileURL(request.url) : request.url;
    std::string page;
    if (!readFile(path, page)) return;
    mBacking->page = std::move(page);
    mBacking->pageURL = fileURLWithPath(path);
    mBacking->restarts = 0;
    mBacking->load();
}

void WebView::drawRect(const Rect&) { gtk_widget_draw(GTK_WIDGET(mBacking->web), canvas().backing().cairo); }

void WebView::fadeEnded(bool isVisible) {
    const bool hasCome = isVisible && !mBacking->isVisible;
    mBacking->isVisible = isVisible;
    if (hasCome)
        webkit_web_view_evaluate_javascript(mBacking->web, "dispatchEvent(new Event('viewshown'))", -1,
                                            nullptr, nullptr, nullptr, nullptr, nullptr);
}

void WebView::frameChanged() { mBacking->resize(bounds().size()); }

}  // namespace platform
