#include "platform/Bundle.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "platform/Files.h"
#include "platform/StringList.h"

namespace {

namespace fs = std::filesystem;

// The bundle is looked for once a process and beside the program, so one is laid there and left for the
// other tests that run at the same time.
TEST(BundleTest, ResourcesAreFoundBesideTheProgram) {
    const fs::path bundle = fs::read_symlink("/proc/self/exe").parent_path() / "Tellmar.saver";
    const fs::path strings = bundle / "resources/strings.ini";
    fs::create_directories(strings.parent_path());
    ASSERT_TRUE(platform::writeFileAtomically(strings, "[128]\n1=one \\t tab\n"));
    ASSERT_TRUE(platform::writeFileAtomically(bundle / "outside.txt", "text"));
    EXPECT_EQ(platform::bundlePath(), bundle);
    EXPECT_EQ(platform::pathForResource("strings.ini"), strings);
    for (const char* name : {"none.html", "", ".", "../outside.txt"})
        EXPECT_EQ(platform::pathForResource(name), "") << name;
    EXPECT_EQ(platform::stringFromList(128, 1), "one \t tab");
    EXPECT_EQ(platform::stringFromList(128, 2) + platform::stringFromList(129, 1), "");
}

}  // namespace
