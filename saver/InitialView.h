#pragma once

#include "platform/portable/View.h"

// The splash that covers the screen while the first quake's page loads.
class InitialView : public platform::View {
  public:
    void drawRect(const platform::Rect& rect) override;

    void clearBackground(const platform::Rect& rect);
    // Centres the map on the size of rect, wherever rect lies. A missing image draws nothing.
    void drawImage(const platform::Rect& rect);
    void drawNotice();
};
