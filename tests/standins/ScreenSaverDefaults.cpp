#include "tests/standins/ScreenSaverDefaults.h"

#include <utility>

#include "platform/ScreenSaverDefaults.h"

namespace platform {

struct ScreenSaverDefaults::Store {
    std::string module;
    std::map<std::string, int> values;
};

ScreenSaverDefaults ScreenSaverDefaults::defaultsForModuleWithName(const std::string& name) {
    return ScreenSaverDefaults(std::make_unique<Store>(Store{name, standins::storedDefaults()[name]}));
}

ScreenSaverDefaults::ScreenSaverDefaults(std::unique_ptr<Store> store) : mStore(std::move(store)) {}
ScreenSaverDefaults::~ScreenSaverDefaults() = default;

int ScreenSaverDefaults::integerForKey(const std::string& key) const { return mStore->values[key]; }
void ScreenSaverDefaults::setInteger(int value, const std::string& key) { mStore->values[key] = value; }

bool ScreenSaverDefaults::synchronize() {
    standins::storedDefaults()[mStore->module] = mStore->values;
    return true;
}

}  // namespace platform
