#pragma once

#include <string>

// A QuakeML 1.0.1 document of that many earthquakes, about 3.8 KB each: the values that the feed parser reads
// and twenty picks, with the attributes and nesting of a real answer. The same count gives the same document.
std::string generateQuakeML(int eventCount);
