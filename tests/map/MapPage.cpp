#include "tests/map/MapPage.h"

#include <webkit2/webkit2.h>

#include <cstdint>
#include <cstdlib>
#include <utility>

#include "mappages/MapsPageWriter.h"
#include "platform/RunLoop.h"
#include "platform/WebView.h"
#include "platform/portable/NotificationCenter.h"

using platform::NotificationCenter;
using platform::RunLoop;
using platform::SurfaceRef;

namespace {

constexpr double kOverhang = 10;  // points past the left and the top edge
constexpr int kPatience = 30000;  // milliseconds

// The web view keeps its widget to itself, but GTK knows every window.
WebKitWebView* newestWebView() {
    WebKitWebView* found = nullptr;
    GList* const windows = gtk_window_list_toplevels();
    for (GList* each = windows; each; each = each->next) {
        GtkWidget* const child =
            GTK_IS_OFFSCREEN_WINDOW(each->data) ? gtk_bin_get_child(GTK_BIN(each->data)) : nullptr;
        if (child && WEBKIT_IS_WEB_VIEW(child)) found = WEBKIT_WEB_VIEW(child);
    }
    g_list_free(windows);
    return found;
}

Picture pictureOf(cairo_surface_t* surface) {
    cairo_surface_flush(surface);
    Picture picture{cairo_image_surface_get_width(surface), cairo_image_surface_get_height(surface), {}};
    for (int y = 0; y < picture.height; ++y) {
        const auto* row = reinterpret_cast<const std::uint32_t*>(cairo_image_surface_get_data(surface) +
                                                                 y * cairo_image_surface_get_stride(surface));
        for (int x = 0; x < picture.width; ++x) picture.pixels.push_back(row[x] & 0xFFFFFF);
    }
    return picture;
}

// What WebKit hands out later.
template <typename Result>
struct Awaited {
    bool isThere = false;
    Result result;

    void take(Result given) {
        result = std::move(given);
        isThere = true;
    }
    Result wait() {
        RunLoop::runUntil([this] { return isThere; });
        return std::move(result);
    }
};

}  // namespace

void MapPage::useDisplay(const std::string& name) {
    setenv("DISPLAY", name.c_str(), 1);
    setenv("GDK_BACKEND", "x11", 1);
    setenv("NO_AT_BRIDGE", "1", 1);
    setenv("WEBKIT_DISABLE_DMABUF_RENDERER", "1", 1);
    gtk_init(nullptr, nullptr);
}

MapPage::MapPage(const platform::Size& screen) : mView(std::make_unique<platform::WebView>()) {
    mView->initWithFrame({-kOverhang, 0, screen.width + kOverhang, screen.height + kOverhang}, "", "");
    mView->setAllowsScrolling(false);
    mWeb = newestWebView();
    g_signal_connect(
        mWeb, "resource-load-started",
        G_CALLBACK(+[](WebKitWebView*, WebKitWebResource*, WebKitURIRequest* request, gpointer self) {
            static_cast<MapPage*>(self)->mRequests.emplace_back(webkit_uri_request_get_uri(request));
        }),
        this);
    NotificationCenter::addObserver(this, platform::WebViewProgressFinishedNotification, [this] {
        if (mIsFinished) return;
        mSurface = draw();
        mIsFinished = true;
    });
}

MapPage::~MapPage() {
    NotificationCenter::removeObserver(this);
    g_signal_handlers_disconnect_by_data(mWeb, this);
}

bool MapPage::show(const CQuakeEvent& quake) {
    MapsPageWriter writer;
    writer.writeForEvent(&quake, mView->bounds().size());
    return load(writer.locationOfTempPage());
}

bool MapPage::load(const std::string& path) {
    mIsFinished = false;
    mView->loadRequest({.url = path});
    if (!RunLoop::runUntil([this] { return mIsFinished; }, kPatience)) return false;
    mPicture = pictureOf(mSurface.get());
    return true;
}

bool MapPage::settle() {
    evaluate(
        "(window.isSettled = false,"
        " requestAnimationFrame(() => requestAnimationFrame(() => { window.isSettled = true; })))");
    return waitFor("isSettled");
}

bool MapPage::waitFor(const std::string& expression) {
    const gint64 end = g_get_monotonic_time() + kPatience * G_TIME_SPAN_MILLISECOND;
    while (evaluate(expression) != "true")
        if (g_get_monotonic_time() > end) return false;
    return true;
}

SurfaceRef MapPage::draw() const {
    const int scale = gtk_widget_get_scale_factor(GTK_WIDGET(mWeb));
    const platform::Size size = mView->bounds().size();
    SurfaceRef surface(cairo_image_surface_create(CAIRO_FORMAT_RGB24, static_cast<int>(size.width) * scale,
                                                  static_cast<int>(size.height) * scale));
    cairo_surface_set_device_scale(surface.get(), scale, scale);
    const platform::CairoRef cairo(cairo_create(surface.get()));
    gtk_widget_draw(GTK_WIDGET(mWeb), cairo.get());
    return surface;
}

Picture MapPage::pictureNow() const { return pictureOf(draw().get()); }

bool MapPage::writeSnapshot(const std::string& path) {
    Awaited<SurfaceRef> snapshot;
    webkit_web_view_get_snapshot(
        mWeb, WEBKIT_SNAPSHOT_REGION_VISIBLE, WEBKIT_SNAPSHOT_OPTIONS_TRANSPARENT_BACKGROUND, nullptr,
        [](GObject* web, GAsyncResult* async, gpointer out) {
            static_cast<Awaited<SurfaceRef>*>(out)->take(
                SurfaceRef(webkit_web_view_get_snapshot_finish(WEBKIT_WEB_VIEW(web), async, nullptr)));
        },
        &snapshot);
    const SurfaceRef surface = snapshot.wait();
    return surface && cairo_surface_write_to_png(surface.get(), path.c_str()) == CAIRO_STATUS_SUCCESS;
}

std::string MapPage::evaluate(const std::string& expression) {
    Awaited<std::string> answer;
    const std::string script = "JSON.stringify(" + expression + ")";
    webkit_web_view_evaluate_javascript(
        mWeb, script.c_str(), -1, nullptr, nullptr, nullptr,
        [](GObject* web, GAsyncResult* async, gpointer out) {
            JSCValue* value =
                webkit_web_view_evaluate_javascript_finish(WEBKIT_WEB_VIEW(web), async, nullptr);
            static_cast<Awaited<std::string>*>(out)->take(
                value ? platform::GText(jsc_value_to_string(value)).get() : "error");
            if (value) g_object_unref(value);
        },
        &answer);
    return answer.wait();
}
