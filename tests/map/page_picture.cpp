// Draws a page without a screen, through the module's own web view and in a display of its own: over nothing,
// with its transparency, once it has set isDrawn.

#include <cstdio>
#include <cstdlib>

#include "tests/map/MapPage.h"
#include "tests/program/TestDisplay.h"

int main(int argumentCount, char** arguments) {
    if (argumentCount != 5) {
        std::fputs("usage: page_picture PAGE.html WIDTH HEIGHT OUT.png\n", stderr);
        return EXIT_FAILURE;
    }
    const TestDisplay display;
    MapPage::useDisplay(display.name());
    MapPage page({std::atof(arguments[2]) - 10, std::atof(arguments[3]) - 10});
    const bool isDrawn = page.load(arguments[1]) && page.waitFor("window.isDrawn") && page.settle() &&
                         page.writeSnapshot(arguments[4]);
    return isDrawn ? EXIT_SUCCESS : EXIT_FAILURE;
}
