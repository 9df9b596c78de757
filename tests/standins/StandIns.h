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
    // Lets every URL answer with quakes of these magnitudes, in this order, latitudes counting up from 0.
    static void serveQuakes(const std::vector<double>& magnitudes);
};

}  // namespace standins
