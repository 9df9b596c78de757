#include "platform/ScreenSaverDefaults.h"

#include <gmock/gmock.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>

#include "tests/TemporaryFolder.h"

using platform::ScreenSaverDefaults;
namespace fs = std::filesystem;

namespace {

constexpr char kModule[] = "org.tellmar.Test", kKey[] = "DisplayQuakeForNSeconds";

// One folder for the whole process: GLib asks for it once.
const std::string& configHome() {
    static const std::string folder = [] {
        std::string name = testing::TempDir() + "settings-XXXXXX";
        mkdtemp(name.data());
        setenv("XDG_CONFIG_HOME", name.c_str(), true);
        return name;
    }();
    return folder;
}

class ScreenSaverDefaultsTest : public testing::Test {
  protected:
    ~ScreenSaverDefaultsTest() override { fs::remove_all(configHome()); }

    static ScreenSaverDefaults defaults() { return ScreenSaverDefaults::defaultsForModuleWithName(kModule); }
    static int stored(const char* key = kKey) { return defaults().integerForKey(key); }
    static bool store(int value) {
        ScreenSaverDefaults settings = defaults();
        settings.setInteger(value, kKey);
        return settings.synchronize();
    }
    // Expects that storing fails with one line on stderr.
    static void expectStoreFails() {
        testing::internal::CaptureStderr();
        EXPECT_FALSE(store(5));
        const std::string told = testing::internal::GetCapturedStderr();
        EXPECT_EQ(std::count(told.begin(), told.end(), '\n'), 1) << told;
    }

    void put(const std::string& content) const {
        fs::create_directories(folder);
        std::ofstream(path) << content;
    }

    const std::string folder = configHome() + "/tellmar", path = folder + "/" + kModule + ".ini";
};

TEST_F(ScreenSaverDefaultsTest, WhatIsStoredIsReadBackByTheNextProcess) {
    EXPECT_EQ(stored(), 0);
    for (const int value : {5, -7, 0, 2147483647}) {
        EXPECT_TRUE(store(value));
        EXPECT_EQ(stored(), value);
    }
    EXPECT_EQ(ScreenSaverDefaults::defaultsForModuleWithName("other").integerForKey(kKey), 0);
    EXPECT_EQ(fs::status(folder).permissions(), fs::perms::owner_all);
}

TEST_F(ScreenSaverDefaultsTest, OtherKeysGroupsAndCommentsAreKept) {
    const std::string head = "# mine\n\n[Other]\nname[nl]=waarde\n\n[Settings]\n# why\nVolume=loud\n";
    put(head + "DisplayQuakeForNSeconds=8\n");
    EXPECT_TRUE(store(6));
    EXPECT_EQ(contentsOf(path), head + "DisplayQuakeForNSeconds=6\n");
}

TEST_F(ScreenSaverDefaultsTest, TwoWritersKeepEachOthersKeysAndWriteOnSynchronizeAlone) {
    ScreenSaverDefaults first = defaults(), second = defaults();
    first.setInteger(1, "First");
    second.setInteger(2, "Second");
    EXPECT_EQ(second.integerForKey("Second"), 2);
    EXPECT_FALSE(fs::exists(path));
    EXPECT_TRUE(first.synchronize());
    EXPECT_TRUE(second.synchronize());
    EXPECT_EQ(stored("First"), 1);
    EXPECT_EQ(stored("Second"), 2);
}

TEST_F(ScreenSaverDefaultsTest, AValueThatIsNoIntegerIsZero) {
    for (const std::string value : {"", "abc", "5s", "5.5", "99999999999", "0x5", "\xff"}) {
        put("[Settings]\nDisplayQuakeForNSeconds=" + value + "\n");
        EXPECT_EQ(stored(), 0) << value;
    }
}

TEST_F(ScreenSaverDefaultsTest, ADamagedFileIsSetAsideAndNeverLost) {
    put("first damage");
    EXPECT_EQ(stored(), 0);
    EXPECT_EQ(contentsOf(path), "first damage");
    EXPECT_TRUE(store(5));
    put("second damage");
    EXPECT_TRUE(store(7));
    EXPECT_EQ(stored(), 7);
    EXPECT_EQ(contentsOf(path + ".damaged"), "first damage");
    EXPECT_EQ(contentsOf(path + ".damaged.1"), "second damage");
}

TEST_F(ScreenSaverDefaultsTest, AFileThatMayNotBeReadIsLeftAlone) {
    const std::string text = "[Settings]\nDisplayQuakeForNSeconds=8\n";
    put(text);
    for (const std::string& each : {folder, configHome()}) fs::permissions(each, fs::perms::all);
    fs::permissions(path, fs::perms::none);
    // The superuser may read anything.
    const auto storeAsOrdinaryUser = [] {
        if (geteuid() == 0 && seteuid(65534) != 0) _exit(2);
        const bool readsAsEmpty = stored() == 0;
        _exit(readsAsEmpty && !store(5) ? 0 : 1);
    };
    EXPECT_EXIT(storeAsOrdinaryUser(), testing::ExitedWithCode(0), "cannot write the settings");
    fs::permissions(path, fs::perms::owner_all);
    EXPECT_EQ(contentsOf(path), text);
}

TEST_F(ScreenSaverDefaultsTest, SomethingElseInThePlaceOfFileOrFolderIsLeftAloneAndToldInOneLine) {
    fs::create_directories(path);
    expectStoreFails();
    EXPECT_TRUE(fs::is_directory(path));
    fs::remove_all(folder);
    std::ofstream(folder) << "a file where the folder should be";
    EXPECT_EQ(stored(), 0);
    expectStoreFails();
}

}  // namespace
