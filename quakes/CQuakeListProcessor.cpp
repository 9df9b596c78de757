#include "quakes/CQuakeListProcessor.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <numeric>

#include "quakes/CQuakeEvent.h"

namespace {

bool hasMagnitude(const CQuakeEvent* quake) { return quake && !std::isnan(quake->mMagnitude); }

// As compare, but fit for sorting: NaN magnitudes come between real ones and null entries.
bool comesBefore(const CQuakeEvent* first, const CQuakeEvent* second) {
    if (hasMagnitude(first) != hasMagnitude(second)) return hasMagnitude(first);
    return compare(first, second);
}

// One mark for each position in the list. Positions rather than pointers, so that a pointer that occurs twice
// counts twice.
std::vector<bool> markBiggest(std::size_t count, const std::vector<CQuakeEvent*>& quakes) {
    std::vector<std::size_t> positions(quakes.size());
    std::iota(positions.begin(), positions.end(), 0);
    const auto cut = positions.begin() + static_cast<std::ptrdiff_t>(count);
    std::nth_element(positions.begin(), cut, positions.end(), [&](std::size_t first, std::size_t second) {
        return comesBefore(quakes[first], quakes[second]);
    });

    std::vector<bool> marks(quakes.size(), false);
    std::for_each(positions.begin(), cut, [&](std::size_t position) { marks[position] = true; });
    return marks;
}

}  // namespace

bool compare(const CQuakeEvent* first, const CQuakeEvent* second) {
    if (!first || !second) return first && !second;
    return first->mMagnitude > second->mMagnitude;
}

void CQuakeListProcessor::KeepBiggestQuakes(int count, std::vector<CQuakeEvent*>& quakes) {
    const auto room = static_cast<std::size_t>(std::max(count, 0));
    if (room >= quakes.size()) return;

    const std::vector<bool> kept = markBiggest(room, quakes);
    std::size_t end = 0;
    for (std::size_t position = 0; position < quakes.size(); ++position)
        if (kept[position]) quakes[end++] = quakes[position];
    quakes.resize(end);
}
