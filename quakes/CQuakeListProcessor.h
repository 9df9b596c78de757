#pragma once

#include <vector>

class CQuakeEvent;

// True when the first magnitude is the greater one; a NaN is neither greater nor smaller than anything. A
// null entry comes after every event.
bool compare(const CQuakeEvent* first, const CQuakeEvent* second);

class CQuakeListProcessor {
  public:
    // Drops all but the count biggest quakes from the list, in time linear in its length. Those that stay
    // keep their order; no event is deleted. Null entries are dropped first, then NaN magnitudes.
    static void KeepBiggestQuakes(int count, std::vector<CQuakeEvent*>& quakes);
};
