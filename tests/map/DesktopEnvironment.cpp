#include <gtest/gtest.h>

#include <cstdlib>
#include <memory>

#include "tests/map/MapPage.h"
#include "tests/program/TestDisplay.h"

namespace {

// A display of their own for all tests of this process, in a zone where local time is easy to tell.
class DesktopEnvironment : public testing::Environment {
  public:
    void SetUp() override {
        setenv("TZ", "UTC", 1);
        mDisplay = std::make_unique<TestDisplay>(1920, 1080);
        MapPage::useDisplay(mDisplay->name());
    }

  private:
    std::unique_ptr<TestDisplay> mDisplay;
};

testing::Environment* const environment = testing::AddGlobalTestEnvironment(new DesktopEnvironment);

}  // namespace
