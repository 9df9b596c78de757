#pragma once

#include <cstdlib>

#include "tests/program/Picture.h"

constexpr Color kSplash{153, 179, 204};
constexpr Color kPink{255, 0, 255};  // what a host leaves in the window that it gives

inline bool isSplash(const Color& color) { return color == kSplash; }
inline bool isBlack(const Color& color) { return color.brightest() < 4; }
inline bool isNearWhite(const Color& color) { return color.darkest() > 235; }
inline bool isLight(const Color& color) { return color.darkest() > 220; }
inline bool isPink(const Color& color) { return color == kPink; }
// Text on the splash and on the preview is black at three quarters.
inline bool isDark(const Color& color) { return color.brightest() < 100; }
// The sea and the land of a map are darker than the splash.
inline bool isMap(const Color& color) { return !isBlack(color) && color.brightest() < 130; }
