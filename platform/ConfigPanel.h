#pragma once

#include <functional>
#include <string>

namespace platform {

// The settings sheet and its controls. They belong to the platform and live to the end of the process.
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

// Loads the bundle's interface file of that name (without extension). Returns false, with no outlet touched,
// when it cannot be loaded.
bool loadNibNamed(const std::string& name, const SheetConnections& owner);

// Shows the sheet until it is ended.
void runSheet(Panel* panel);
// Ends the sheet's run and takes it off the screen.
void endSheet(Panel* panel);

}  // namespace platform
