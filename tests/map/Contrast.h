#pragma once

#include <string>
#include <vector>

class MapPage;

// How a name or another text stands out from its surroundings where it does so least, by WCAG's contrast ratio.
struct NameContrast {
    std::string name;
    double ratio;
};

// Measures the names of the page's map on its picture, stretch by stretch, each as long as the name is high.
std::vector<NameContrast> contrastsOfNames(MapPage& page);
// Measures the lines of the panel, the credit, the scale and the key by their brightest pixels.
std::vector<NameContrast> contrastsOfTexts(MapPage& page);
