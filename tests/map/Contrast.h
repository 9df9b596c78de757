#pragma once

#include <string>
#include <vector>

class MapPage;

// How a name stands out from its surroundings where it does so least, by WCAG's contrast ratio.
struct NameContrast {
    std::string name;
    double ratio;
};

// Measures the names of the page's map on its picture, stretch by stretch, each as long as the name is high.
std::vector<NameContrast> contrastsOfNames(MapPage& page);
