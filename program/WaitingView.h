#pragma once

#include <memory>

#include "platform/portable/ScreenSaverView.h"

// Looks as the saver's view does at first, but fetches nothing and loads no page. Its frame is empty.
std::unique_ptr<platform::ScreenSaverView> makeWaitingView(bool isPreview);
