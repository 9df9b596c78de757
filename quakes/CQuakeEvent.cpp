#include "quakes/CQuakeEvent.h"

#include <cstddef>
#include <cstring>

namespace {

// Copies as much of text as fits, terminator included.
void copyWithin(char* room, std::size_t size, const char* text) {
    const std::size_t length = strnlen(text, size - 1);
    std::memcpy(room, text, length);
    room[length] = '\0';
}

}  // namespace

CQuakeEvent::CQuakeEvent(const char* time, double magnitude, double latitude, double longitude, double depth)
    : mMagnitude(magnitude), mLatitude(latitude), mLongitude(longitude), mDepth(depth) {
    copyWithin(mTime, sizeof mTime, time);
    ReplaceFractionByZone();
}

void CQuakeEvent::ReplaceFractionByZone() {
    char* const fullStop = std::strrchr(mTime, '.');
    if (fullStop) copyWithin(fullStop, mTime + sizeof mTime - fullStop, " +0000");
}
