#pragma once

#include <string>

// A text that stands for the quakes of the program's list, the ten biggest: the same only for the same
// quakes. Empty if there are none. Fetches the feed if that has not been done yet.
std::string quakeDigest();
