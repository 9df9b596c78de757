#pragma once

#include <chrono>
#include <optional>
#include <vector>

class CQuakeEvent;
class CQuakeList;

// The program's list with no more quakes than are shown. Fetches the feed if that has not been done yet.
const CQuakeList& biggestQuakes();

// The quakes that a list keeps, at most ten, in the order in which its first round shows them.
std::vector<const CQuakeEvent*> quakesAsShown(const CQuakeList& list);

// When a quake happened; empty if its text is not a time.
std::optional<std::chrono::sys_seconds> timeOf(const CQuakeEvent& quake);
