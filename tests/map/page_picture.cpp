// Draws a page through the module's own web view: over nothing, with its transparency, once its picture is
// whole.

#include <cstdio>
#include <cstdlib>

#include "tests/map/MapPage.h"

int main(int argumentCount, char** arguments) {
    if (argumentCount != 5) {
        std::fputs("usage: page_picture PAGE.html WIDTH HEIGHT OUT.png\n", stderr);
        return EXIT_FAILURE;
    }
    MapPage page({std::atof(arguments[2]) - 10, std::atof(arguments[3]) - 10});
    return page.load(arguments[1]) && page.writeSnapshot(arguments[4]) ? EXIT_SUCCESS : EXIT_FAILURE;
}
