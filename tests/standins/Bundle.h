#pragma once

#include <set>
#include <string>

namespace standins {

// A bundle whose only real file is the map template among the test data.
struct Bundle {
    std::string path = TEST_DATA "/Tellmar.saver";
    std::set<std::string> resources{"map.html", "google_maps_nz.png", "google_maps_nz_pre.png"};
};

inline Bundle& bundle() {
    static Bundle state;
    return state;
}

}  // namespace standins
