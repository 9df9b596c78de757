#pragma once

#include "tests/program/Colors.h"
#include "tests/program/TestDisplay.h"

// A map reaches into all corners of the part of the screen.
inline bool showsMap(const Picture& picture, const TestDisplay::Area& area) {
    const int right = area.left + area.width - 1, bottom = area.top + area.height - 1;
    if (right >= picture.width || bottom >= picture.height) return false;
    return isMap(picture.at(area.left, area.top)) && isMap(picture.at(right, area.top)) &&
           isMap(picture.at(area.left, bottom)) && isMap(picture.at(right, bottom));
}

// The splash leaves the corners of the part in its background.
inline bool showsSplash(const Picture& picture, const TestDisplay::Area& area) {
    return isSplash(picture.at(area.left, area.top)) &&
           isSplash(picture.at(area.left + area.width - 1, area.top + area.height - 1));
}

// A dialog lies over the middle of the part: large and light, as nothing on a map is.
inline bool showsDialog(const Picture& picture, const TestDisplay::Area& area) {
    const int x = area.left + area.width / 2, y = area.top + area.height / 2;
    return picture.count(x - 100, y - 50, x + 100, y + 50, isLight) > 200 * 100 / 2;
}

// The small still image: dark text in its upper part, and nothing left black or in the host's colour.
inline bool showsPreview(const Picture& picture, const TestDisplay::Area& area) {
    const int right = area.left + area.width, bottom = area.top + area.height;
    if (area.width == 0 || right > picture.width || bottom > picture.height) return false;
    const int unpainted = picture.count(area.left, area.top, right, bottom, isBlack);
    const int text = picture.count(area.left + 5, area.top, right, area.top + area.height / 4, isDark);
    return unpainted < text && text > 20;
}
