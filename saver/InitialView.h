#pragma once

#include "platform/portable/View.h"

// The splash that covers the screen while the first quake's page loads.
class InitialView : public platform::View {
  public:
    void drawRect(const platform::Rect& rect) override;

    void clearBackground(const platform::Rect& rect);
    // Centres the map by the size of rect, ignoring its origin. Draws nothing when the image is missing.
    void drawImage(const platform::Rect& rect);
    void drawNotice();
};
