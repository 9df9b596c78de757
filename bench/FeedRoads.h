#pragma once

#include <string>
#include <vector>

class CQuakeEvent;

// The two ways from a document's bytes to quakes that are compared. Both take the bytes over, let them go
// when they are parsed, and release the parsed tree before they return. The caller owns the quakes.

// What the screen saver does.
std::vector<CQuakeEvent*> quakesOnFeedRoad(std::string document);

// The same values from a tree of libxml2.
std::vector<CQuakeEvent*> quakesOnLibxml2Road(std::string document);
