#include "tests/map/MapPage.h"

#include <webkit2/webkit2.h>

#include <cstdlib>
#include <optional>

#include "mappages/MapsPageWriter.h"
#include "platform/RunLoop.h"
#include "platform/WebView.h"
#include "platform/linux/desktop/CairoHandles.h"
#include "platform/portable/NotificationCenter.h"

using platform::NotificationCenter, platform::RunLoop, platform::SurfaceRef;

namespace {

constexpr double kOverhang = 10;  // points past the left and the top edge
constexpr int kPatience = 30000;  // milliseconds

bool startDesktop() {
    setenv("TZ", "UTC", 1);
    setenv("GDK_BACKEND", "x11", 1);
    setenv("NO_AT_BRIDGE", "1", 1);
    setenv("WEBKIT_DISABLE_DMABUF_RENDERER", "1", 1);
    return gtk_init_check(nullptr, nullptr);
}

// The web view keeps its widget to itself, but GTK knows every window.
WebKitWebView* newestWebView() {
    WebKitWebView* found = nullptr;
    GList* const windows = gtk_window_list_toplevels();
    for (GList* each = windows; each; each = each->next)
        if (GTK_IS_OFFSCREEN_WINDOW(each->data))
            found = WEBKIT_WEB_VIEW(gtk_bin_get_child(GTK_BIN(each->data)));
    g_list_free(windows);
    return found;
}

}  // namespace

MapPage::MapPage(const platform::Size& screen) {
    static const bool isStarted = startDesktop();
    if (!isStarted) std::abort();
    mView = std::make_unique<platform::WebView>();
    mView->initWithFrame({-kOverhang, 0, screen.width + kOverhang, screen.height + kOverhang}, "", "");
    mView->setAllowsScrolling(false);
    mWeb = newestWebView();
    NotificationCenter::addObserver(this, platform::WebViewProgressFinishedNotification, [this] {
        ++mLoads;
        mPicture = pictureNow();
    });
}

MapPage::~MapPage() { NotificationCenter::removeObserver(this); }

// The page's arrangement depends on the clock.
void MapPage::setClock(int page) {
    const std::string script = "Date.now = () => 1795219200000 + 15000 * " + std::to_string(page);
    WebKitUserScript* const user =
        webkit_user_script_new(script.c_str(), WEBKIT_USER_CONTENT_INJECT_TOP_FRAME,
                               WEBKIT_USER_SCRIPT_INJECT_AT_DOCUMENT_START, nullptr, nullptr);
    webkit_user_content_manager_add_script(webkit_web_view_get_user_content_manager(mWeb), user);
    webkit_user_script_unref(user);
}

bool MapPage::show(const CQuakeEvent& quake) {
    setClock(mShown++);
    MapsPageWriter writer;
    writer.writeForEvent(&quake, mView->bounds().size());
    return load(writer.locationOfTempPage());
}

bool MapPage::load(const std::string& path) {
    mView->loadRequest({.url = path});
    return RunLoop::runUntil([this, awaited = mLoads + 1] { return mLoads >= awaited; }, kPatience);
}

bool MapPage::waitFor(const std::string& expression) {
    const gint64 end = g_get_monotonic_time() + kPatience * G_TIME_SPAN_MILLISECOND;
    while (evaluate(expression) != "true")
        if (g_get_monotonic_time() > end) return false;
    return true;
}

Picture MapPage::pictureNow() const {
    const platform::Size size = mView->bounds().size();
    Picture picture{static_cast<int>(size.width), static_cast<int>(size.height), {}};
    picture.pixels.resize(static_cast<std::size_t>(picture.width * picture.height));
    const SurfaceRef surface(cairo_image_surface_create_for_data(
        reinterpret_cast<unsigned char*>(picture.pixels.data()), CAIRO_FORMAT_ARGB32, picture.width,
        picture.height, picture.width * static_cast<int>(sizeof picture.pixels[0])));
    gtk_widget_draw(GTK_WIDGET(mWeb), platform::CairoRef(cairo_create(surface.get())).get());
    cairo_surface_flush(surface.get());
    return picture;
}

std::string MapPage::evaluate(const std::string& expression) {
    const std::string script = "return JSON.stringify(" + expression + ")";
    std::optional<std::string> answer;
    const auto finish = [](GObject* web, GAsyncResult* result, gpointer out) {
        const platform::ObjectRef<JSCValue> value(
            webkit_web_view_call_async_javascript_function_finish(WEBKIT_WEB_VIEW(web), result, nullptr));
        *static_cast<std::optional<std::string>*>(out) =
            value ? platform::GText(jsc_value_to_string(value.get())).get() : "error";
    };
    webkit_web_view_call_async_javascript_function(mWeb, script.c_str(), -1, nullptr, nullptr, nullptr,
                                                   nullptr, finish, &answer);
    RunLoop::runUntil([&] { return answer.has_value(); });
    return *answer;
}
