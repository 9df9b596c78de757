#pragma once

#include <string>
#include <vector>

class CQuakeEvent;

// The two pipelines from a document's bytes to quakes that are compared. Both own the bytes, free them once
// they are parsed, and free the parsed tree before they return. The caller owns the quakes.

// What the screen saver does.
std::vector<CQuakeEvent*> quakesFromFeedPipeline(std::string document);

// The same values from a libxml2 tree.
std::vector<CQuakeEvent*> quakesFromLibxml2Pipeline(std::string document);
