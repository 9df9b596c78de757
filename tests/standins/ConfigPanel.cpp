#include "tests/standins/ConfigPanel.h"

namespace platform {

int intValue(const Slider* slider) { return slider->value; }

bool loadNibNamed(const std::string& name, const SheetConnections& owner) {
    standins::ConfigSheet& sheet = standins::configSheet();
    if (!sheet.canLoad || name != "ConfigPanel") return false;
    ++sheet.loads;
    owner.configPanel = &sheet.panel;
    owner.zoomSlider = &sheet.zoomSlider;
    owner.rateSlider = &sheet.rateSlider;
    owner.okButton = &sheet.okButton;
    owner.cancelButton = &sheet.cancelButton;
    sheet.okAction = owner.closeSheetSave;
    sheet.cancelAction = owner.closeSheetCancel;
    return true;
}

void endSheet(Panel* panel) { standins::configSheet().ends += panel == &standins::configSheet().panel; }

}  // namespace platform
