#pragma once

#include <functional>
#include <string>

namespace platform {

// The settings sheet and its controls. They belong to the platform and live until the process ends.
class Panel;
class Slider;
class Button;

int intValue(const Slider* slider);

// What an interface file connects: the outlets it fills and the actions its buttons send.
struct SheetConnections {
    Panel*& configPanel;
    Slider*& zoomSlider;
    Slider*& rateSlider;
    Button*& okButton;
    Button*& cancelButton;
    std::function<void(Button* sender)> closeSheetSave;
    std::function<void(Button* sender)> closeSheetCancel;
};

// Loads the interface file of that name (without extension) from the bundle. On failure returns false and
// leaves the outlets alone.
bool loadNibNamed(const std::string& name, const SheetConnections& owner);

// Shows the sheet and returns once endSheet was called.
void runSheet(Panel* panel);
// Hides the sheet and ends runSheet.
void endSheet(Panel* panel);

}  // namespace platform
