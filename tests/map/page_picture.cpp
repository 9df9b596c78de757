// Draws pages without a screen, each through the module's own web view, in a display of its own.
//
//   page_picture PAGE.html WIDTH HEIGHT OUT.png          that page over nothing, with its transparency,
//                                                        once it has set isDrawn
//   page_picture WIDTH HEIGHT < list                     the map of each quake on stdin, one a line:
//                                                        LATITUDE LONGITUDE MAGNITUDE DEPTH OUT.png

#include <gtk/gtk.h>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <iostream>
#include <sstream>

#include "quakes/CQuakeEvent.h"
#include "tests/map/MapPage.h"
#include "tests/program/TestDisplay.h"

namespace {

int drawPage(const char* page, double width, double height, const char* output) {
    MapPage map({width - 10, height - 10});
    return map.load(page) && map.waitFor("window.isDrawn") && map.settle() && map.writeSnapshot(output)
               ? EXIT_SUCCESS
               : EXIT_FAILURE;
}

bool drawQuake(MapPage& map, const std::string& line) {
    std::istringstream words(line);
    std::string latitude, longitude, magnitude, depth, output;
    words >> latitude >> longitude >> magnitude >> depth >> output;
    const CQuakeEvent quake("2016-11-13T11:02:56.346Z", std::strtod(magnitude.c_str(), nullptr),
                            std::strtod(latitude.c_str(), nullptr), std::strtod(longitude.c_str(), nullptr),
                            std::strtod(depth.c_str(), nullptr));
    const auto start = std::chrono::steady_clock::now();
    if (!map.show(quake) || !map.writePicture(output)) return false;
    const std::chrono::duration<double, std::milli> duration = std::chrono::steady_clock::now() - start;
    std::printf("%s %.0f ms %s\n", output.c_str(), duration.count(),
                map.evaluate("tellmarLayout.missing").c_str());
    return true;
}

int drawQuakes(double width, double height) {
    MapPage map({width, height});
    for (std::string line; std::getline(std::cin, line);)
        if (!drawQuake(map, line)) return EXIT_FAILURE;
    return EXIT_SUCCESS;
}

}  // namespace

int main(int argumentCount, char** arguments) {
    const TestDisplay display;
    setenv("DISPLAY", display.name().c_str(), 1);
    setenv("GDK_BACKEND", "x11", 1);
    setenv("WEBKIT_DISABLE_DMABUF_RENDERER", "1", 1);
    gtk_init(nullptr, nullptr);
    if (argumentCount == 5)
        return drawPage(arguments[1], std::atof(arguments[2]), std::atof(arguments[3]), arguments[4]);
    if (argumentCount == 3) return drawQuakes(std::atof(arguments[1]), std::atof(arguments[2]));
    std::fputs("usage: page_picture PAGE.html WIDTH HEIGHT OUT.png | page_picture WIDTH HEIGHT < list\n",
               stderr);
    return EXIT_FAILURE;
}
