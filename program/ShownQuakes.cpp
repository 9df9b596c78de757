#include "program/ShownQuakes.h"

#include <algorithm>
#include <string>

#include "quakes/CQuakeEvent.h"
#include "quakes/CQuakeList.h"
#include "support/ISOTime.h"

namespace {

constexpr int kMaxShownQuakes = 10;

}  // namespace

const CQuakeList& biggestQuakes() {
    CQuakeList* const list = CQuakeList::Instance();
    list->KeepBiggestQuakes(kMaxShownQuakes);
    return *list;
}

// The cycle walks the list backwards. The first two swap places: the view that asks for its page second
// appears first.
std::vector<const CQuakeEvent*> quakesAsShown(const CQuakeList& list) {
    const auto& quakes = list.GetQuakes();
    std::vector<const CQuakeEvent*> shown(quakes.rbegin(), quakes.rend());
    if (shown.size() >= 2) std::swap(shown[0], shown[1]);
    std::erase(shown, nullptr);
    shown.resize(std::min<std::size_t>(shown.size(), kMaxShownQuakes));
    return shown;
}

// 2009-03-03T01:05:09 +0000, or as the feed has it.
std::optional<std::chrono::sys_seconds> timeOf(const CQuakeEvent& quake) {
    std::string text = quake.mTime;
    std::erase(text, ' ');
    const auto time = readISOTime(text);
    if (!time) return std::nullopt;
    return std::chrono::floor<std::chrono::seconds>(*time);
}
