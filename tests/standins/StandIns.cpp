#include "tests/standins/StandIns.h"

#include "quakes/CQuakeList.h"
#include "tests/standins/Alert.h"
#include "tests/standins/Bundle.h"
#include "tests/standins/Clock.h"
#include "tests/standins/ConfigPanel.h"
#include "tests/standins/ScreenSaverDefaults.h"
#include "tests/standins/SystemInfo.h"
#include "tests/standins/URLLoading.h"
#include "tests/standins/ViewAnimation.h"

standins::Test::Test() {
    alertRecord() = {};
    bundle() = {};
    clock() = {};
    configSheet() = {};
    fades() = {};
    machine() = {};
    storedDefaults() = {};
    urlLoading() = {};
    CQuakeList::mSingletonInstance = nullptr;
}

// The quake list, its parser and the quakes live to the end of the process by design; tests make several.
extern "C" const char* __lsan_default_suppressions();
extern "C" const char* __lsan_default_suppressions() { return "leak:CQuakeList::\nleak:CQuakeMLParser::\n"; }
