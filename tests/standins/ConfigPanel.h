#pragma once

#include <functional>

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
    int loads = 0, ends = 0;

    platform::Panel panel;
    platform::Slider zoomSlider, rateSlider;
    platform::Button okButton, cancelButton;
    std::function<void(platform::Button*)> okAction, cancelAction;

    void pressOK() { okAction(&okButton); }
    void pressCancel() { cancelAction(&cancelButton); }
};

inline ConfigSheet& configSheet() {
    static ConfigSheet state;
    return state;
}

}  // namespace standins
