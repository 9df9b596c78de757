#include "support/OrvSystem.h"

#include <gmock/gmock.h>

#include "tests/standins/SystemInfo.h"

namespace {

class OrvSystemTest : public testing::Test {
  protected:
    ~OrvSystemTest() override { standins::machine() = {}; }
};

TEST_F(OrvSystemTest, VersionAndClockAreAskedForOnce) {
    EXPECT_EQ(OrvSystem::GetOSVersion(), 0x1049);
    EXPECT_EQ(OrvSystem::GetCPUSpeed(), 1'600'000'000);
    standins::machine().version = 0x1050;
    standins::machine().clock = 1;
    EXPECT_EQ(OrvSystem::GetOSVersion(), 0x1049);
    EXPECT_EQ(OrvSystem::GetCPUSpeed(), 1'600'000'000);
}

TEST_F(OrvSystemTest, ProcessorsAreNumberedFromOne) {
    EXPECT_STREQ(OrvSystem::GetCPUInfo(), "CPU #1/2: TYPE=7;SUB_T=3, CPU #2/2: TYPE=18;SUB_T=10");
    standins::machine().processors = {{0x01000007, 3}};
    EXPECT_STREQ(OrvSystem::GetCPUInfo(), "CPU #1/1: TYPE=16777223;SUB_T=3");
    standins::machine().processors.clear();
    EXPECT_STREQ(OrvSystem::GetCPUInfo(), "");
}

TEST_F(OrvSystemTest, AListOfManyProcessorsIsCutAtTheBuffersEnd) {
    standins::machine().processors.assign(128, {0x01000007, 3});
    const std::string text = OrvSystem::GetCPUInfo();
    EXPECT_EQ(text.size(), 255u);
    EXPECT_EQ(text.substr(0, 48), "CPU #1/128: TYPE=16777223;SUB_T=3, CPU #2/128: T");
}

TEST_F(OrvSystemTest, TheMachineNameKeepsItsLengthByte) {
    EXPECT_STREQ(OrvSystem::GetMachineName(), "\7Model 7");
    standins::machine().name.assign(300, 'm');
    EXPECT_EQ(OrvSystem::GetMachineName(), "\xFF" + std::string(254, 'm'));
    standins::machine().name.clear();
    EXPECT_STREQ(OrvSystem::GetMachineName(), "");
}

TEST_F(OrvSystemTest, TheProcessNameIsMacRomanOrEmpty) {
    EXPECT_STREQ(OrvSystem::GetProcessName(), "Tellmar Tests");
    standins::machine().process = "Caf\xC3\xA9";
    EXPECT_STREQ(OrvSystem::GetProcessName(), "Caf\x8E");
    standins::machine().process = "\xE6\xBC\xA2";  // not in Mac Roman
    EXPECT_STREQ(OrvSystem::GetProcessName(), "");
    standins::machine().process.assign(400, 'p');
    EXPECT_EQ(OrvSystem::GetProcessName(), std::string(255, 'p'));
}

}  // namespace
