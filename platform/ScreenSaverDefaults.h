#pragma once

#include <memory>
#include <string>

namespace platform {

// The stored settings of one module.
class ScreenSaverDefaults {
  public:
    static ScreenSaverDefaults defaultsForModuleWithName(const std::string& name);
    ~ScreenSaverDefaults();
    ScreenSaverDefaults(ScreenSaverDefaults&&) noexcept;

    int integerForKey(const std::string& key) const;  // 0 when not set
    void setInteger(int value, const std::string& key);
    // Writes the changes to disk at once. Returns false on failure. Other keys are kept either way.
    bool synchronize();

  private:
    struct Store;
    explicit ScreenSaverDefaults(std::unique_ptr<Store> store);
    std::unique_ptr<Store> mStore;
};

}  // namespace platform
