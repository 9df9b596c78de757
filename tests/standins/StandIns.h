#pragma once

#include <gmock/gmock.h>

#include <string>
#include <vector>

#include "tests/standins/Desktop.h"

namespace standins {

// Begins with the desktop as it was at the start, and without a quake list.
class Test : public testing::Test {
  protected:
    Test();

    static void finishALoad();
    // Lets every URL answer with this document.
    static void serveDocument(const std::string& document);
    // The same with quakes of these magnitudes, in this order, latitudes counting up from 0.
    static void serveQuakes(const std::vector<double>& magnitudes);
    // What the list learns from this document, a text for each quake; "none" for a null entry.
    static std::vector<std::string> quakesIn(const std::string& document);
};

}  // namespace standins
