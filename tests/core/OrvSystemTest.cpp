#include "support/OrvSystem.h"

#include "tests/standins/StandIns.h"

namespace {

using standins::desktop;
using OrvSystemTest = standins::Test;

TEST_F(OrvSystemTest, TextsEndWithTheirBuffers) {
    desktop.processors.assign(128, {0x01000007, 3});
    const std::string text = OrvSystem::GetCPUInfo();
    EXPECT_EQ(text.size(), 255u);
    EXPECT_EQ(text.substr(0, 48), "CPU #1/128: TYPE=16777223;SUB_T=3, CPU #2/128: T");
    EXPECT_STREQ(OrvSystem::GetMachineName(), "\7Model 7");  // keeps its length byte
    desktop.machineName.assign(300, 'm');
    EXPECT_EQ(OrvSystem::GetMachineName(), "\xFF" + std::string(254, 'm'));
}

TEST_F(OrvSystemTest, TheProcessNameIsMacRomanOrEmpty) {
    const auto nameOf = [](const std::string& process) {
        desktop.processName = process;
        return std::string(OrvSystem::GetProcessName());
    };
    EXPECT_EQ(nameOf("Caf\xC3\xA9"), "Caf\x8E");
    EXPECT_EQ(nameOf("\xE6\xBC\xA2"), "");  // not in Mac Roman
    EXPECT_EQ(nameOf(std::string(400, 'p')), std::string(255, 'p'));
}

}  // namespace
