#pragma once

#include <functional>
#include <string>
#include <vector>

#include "platform/ConfigPanel.h"

namespace platform {

class Panel {};
class Button {};
class Slider {
  public:
    int value = 0;
};

}  // namespace platform

namespace standins {

// The one sheet there is, and who was connected to its buttons.
struct ConfigSheet {
    bool canLoad = true;
    std::vector<std::string> loadedNames;  // asked for, loaded or not
    std::vector<platform::Panel*> ended;

    platform::Panel panel;
    platform::Slider zoomSlider;
    platform::Slider rateSlider;
    platform::Button okButton;
    platform::Button cancelButton;
    std::function<void(platform::Button*)> okAction;
    std::function<void(platform::Button*)> cancelAction;

    void pressOK() { okAction(&okButton); }
    void pressCancel() { cancelAction(&cancelButton); }
};

ConfigSheet& configSheet();

}  // namespace standins
