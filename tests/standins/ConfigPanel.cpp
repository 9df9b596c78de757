#include "tests/standins/ConfigPanel.h"

namespace standins {

ConfigSheet& configSheet() {
    static ConfigSheet state;
    return state;
}

}  // namespace standins

namespace platform {

int intValue(const Slider* slider) { return slider->value; }

bool loadNibNamed(const std::string& name, const SheetConnections& owner) {
    standins::ConfigSheet& sheet = standins::configSheet();
    sheet.loadedNames.push_back(name);
    if (!sheet.canLoad) return false;
    owner.configPanel = &sheet.panel;
    owner.zoomSlider = &sheet.zoomSlider;
    owner.rateSlider = &sheet.rateSlider;
    owner.okButton = &sheet.okButton;
    owner.cancelButton = &sheet.cancelButton;
    sheet.okAction = owner.closeSheetSave;
    sheet.cancelAction = owner.closeSheetCancel;
    return true;
}

void endSheet(Panel* panel) { standins::configSheet().ended.push_back(panel); }

}  // namespace platform
