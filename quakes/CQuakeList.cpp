#include "quakes/CQuakeList.h"

#include <cstddef>
#include <cstdio>
#include <new>

#include "quakes/CQuakeEvent.h"
#include "quakes/CQuakeListProcessor.h"
#include "quakes/CQuakeMLParser.h"
#include "support/CErr.h"

namespace {

// Enough for a time of 255 characters, the number and four values of up to 13 characters each.
constexpr std::size_t kDumpLineSize = 512;

}  // namespace

CQuakeList* CQuakeList::mSingletonInstance = nullptr;

CQuakeList* CQuakeList::Instance() {
    if (mSingletonInstance) return mSingletonInstance;
    mSingletonInstance = new (std::nothrow) CQuakeList;
    Err.CheckNull(mSingletonInstance, "static CQuakeList* CQuakeList::Instance()",
                  "Failed to construct CQuakeList singleton member");
    return mSingletonInstance;
}

CQuakeList::CQuakeList() {
    const auto* const parser = new CQuakeMLParser;  // kept until the process ends, like its events
    mQuakes = parser->GetEvents();
}

void CQuakeList::KeepBiggestQuakes(int count) {
    DumpQuakeInfo();
    CQuakeListProcessor::KeepBiggestQuakes(count, mQuakes);
    DumpQuakeInfo();
}

CQuakeEvent* CQuakeList::GetNextQuake() {
    if (mQuakes.empty()) return nullptr;
    const auto size = static_cast<std::int32_t>(mQuakes.size());
    --mCurrentIndex;
    // The list may have shrunk since the last call.
    if (mCurrentIndex < 0 || mCurrentIndex >= size) mCurrentIndex = size - 1;
    return mQuakes[static_cast<std::size_t>(mCurrentIndex)];
}

void CQuakeList::DumpQuakeInfo() const {
    int number = 0;
    for (const CQuakeEvent* quake : mQuakes) {
        ++number;
        if (!quake) continue;
        char line[kDumpLineSize];
        std::snprintf(line, sizeof line, "[%2d]  %s: Mag=%G, Depth=%Gkm, Lat=%G, Long=%G", number,
                      quake->mTime, quake->mMagnitude, quake->mDepth, quake->mLatitude, quake->mLongitude);
        Err.DebugPrint(line);
    }
}
