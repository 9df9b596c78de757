#include "platform/ScreenSaverDefaults.h"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>

#include "tests/TemporaryFolder.h"

using platform::ScreenSaverDefaults;
namespace fs = std::filesystem;

namespace {

constexpr char kModule[] = "org.tellmar.Test", kKey[] = "DisplayQuakeForNSeconds";

// One folder for the whole process: GLib asks for it once.
const std::string kConfigHome = testing::TempDir() + "settings-" + std::to_string(getpid());

class ScreenSaverDefaultsTest : public testing::Test {
  protected:
    ScreenSaverDefaultsTest() { setenv("XDG_CONFIG_HOME", kConfigHome.c_str(), true); }
    ~ScreenSaverDefaultsTest() override { fs::remove_all(kConfigHome); }

    static ScreenSaverDefaults defaults() { return ScreenSaverDefaults::defaultsForModuleWithName(kModule); }
    static int stored() { return defaults().integerForKey(kKey); }
    static bool store(int value) {
        ScreenSaverDefaults settings = defaults();
        settings.setInteger(value, kKey);
        return settings.synchronize();
    }
    void put(const std::string& content) const {
        fs::create_directories(folder);
        std::ofstream(path) << content;
    }

    const std::string folder = kConfigHome + "/tellmar", path = folder + "/" + kModule + ".ini";
};

TEST_F(ScreenSaverDefaultsTest, WhatAProcessStoresCountsForAllUntilAnotherStoresLater) {
    ScreenSaverDefaults settings = defaults();
    EXPECT_EQ(stored(), 0);
    settings.setInteger(-7, kKey);
    EXPECT_TRUE(settings.synchronize());
    EXPECT_EQ(stored(), -7);
    EXPECT_EQ(ScreenSaverDefaults::defaultsForModuleWithName("other").integerForKey(kKey), 0);
    EXPECT_EQ(fs::status(folder).permissions(), fs::perms::owner_all);
    EXPECT_TRUE(store(8));
    EXPECT_EQ(settings.integerForKey(kKey), 8);
    EXPECT_TRUE(settings.synchronize());
    EXPECT_EQ(stored(), 8);
}

TEST_F(ScreenSaverDefaultsTest, WhatOthersWroteIsKept) {
    ScreenSaverDefaults settings = defaults();
    settings.setInteger(6, kKey);
    EXPECT_EQ(settings.integerForKey(kKey), 6);
    EXPECT_FALSE(fs::exists(path));  // until they are synchronized
    const std::string head = "# mine\n\n[Other]\nname[nl]=waarde\n\n[Settings]\n# why\nVolume=loud\n";
    put(head + "DisplayQuakeForNSeconds=8\n");
    EXPECT_TRUE(settings.synchronize());
    EXPECT_EQ(contentsOf(path), head + "DisplayQuakeForNSeconds=6\n");
}

TEST_F(ScreenSaverDefaultsTest, ADamagedFileIsSetAside) {
    put("first damage");
    EXPECT_EQ(stored(), 0);
    EXPECT_TRUE(store(5));
    put("second damage");
    EXPECT_TRUE(store(7));
    EXPECT_EQ(stored(), 7);
    EXPECT_EQ(contentsOf(path + ".damaged"), "first damage");
    EXPECT_EQ(contentsOf(path + ".damaged.1"), "second damage");
}

TEST_F(ScreenSaverDefaultsTest, SomethingElseInThePlaceOfTheFileIsLeftAlone) {
    fs::create_directories(folder);
    ASSERT_EQ(mkfifo(path.c_str(), 0600), 0);
    EXPECT_FALSE(store(5));
    EXPECT_TRUE(fs::is_fifo(path));
}

}  // namespace
