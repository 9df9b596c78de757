#include <gtest/gtest.h>
#include <gtk/gtk.h>

#include <cstdlib>
#include <memory>

#include "tests/program/TestDisplay.h"

namespace {

// A display of their own for all tests of this process, in a zone where local time is easy to tell.
class DesktopEnvironment : public testing::Environment {
  public:
    void SetUp() override {
        mDisplay = std::make_unique<TestDisplay>(1920, 1080);
        setenv("DISPLAY", mDisplay->name().c_str(), 1);
        setenv("GDK_BACKEND", "x11", 1);
        setenv("NO_AT_BRIDGE", "1", 1);
        setenv("TZ", "UTC", 1);
        setenv("WEBKIT_DISABLE_DMABUF_RENDERER", "1", 1);
        ASSERT_TRUE(gtk_init_check(nullptr, nullptr));
    }

  private:
    std::unique_ptr<TestDisplay> mDisplay;
};

testing::Environment* const environment = testing::AddGlobalTestEnvironment(new DesktopEnvironment);

}  // namespace
