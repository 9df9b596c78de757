// Draws a page through the module's own web view: over nothing, with its transparency, once its picture is
// whole.

#include <webkit2/webkit2.h>

#include <cstdio>
#include <cstdlib>
#include <optional>

#include "platform/RunLoop.h"
#include "platform/linux/desktop/CairoHandles.h"
#include "tests/map/MapPage.h"

namespace {

struct Drawing {
    const char* path;
    std::optional<bool> isWritten;
};

void write(GObject* web, GAsyncResult* result, gpointer data) {
    Drawing& drawing = *static_cast<Drawing*>(data);
    const platform::SurfaceRef surface(
        webkit_web_view_get_snapshot_finish(WEBKIT_WEB_VIEW(web), result, nullptr));
    drawing.isWritten =
        surface && cairo_surface_write_to_png(surface.get(), drawing.path) == CAIRO_STATUS_SUCCESS;
}

bool draw(WebKitWebView* web, const char* path) {
    Drawing drawing{path, {}};
    webkit_web_view_get_snapshot(web, WEBKIT_SNAPSHOT_REGION_VISIBLE,
                                 WEBKIT_SNAPSHOT_OPTIONS_TRANSPARENT_BACKGROUND, nullptr, write, &drawing);
    platform::RunLoop::runUntil([&] { return drawing.isWritten.has_value(); });
    return *drawing.isWritten;
}

}  // namespace

int main(int argumentCount, char** arguments) {
    if (argumentCount != 5) {
        std::fputs("usage: page_picture PAGE.html WIDTH HEIGHT OUT.png\n", stderr);
        return EXIT_FAILURE;
    }
    MapPage page({std::atof(arguments[2]) - 10, std::atof(arguments[3]) - 10});
    return page.load(arguments[1]) && draw(page.web(), arguments[4]) ? EXIT_SUCCESS : EXIT_FAILURE;
}
