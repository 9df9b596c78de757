#include "platform/Bundle.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "platform/Files.h"
#include "platform/StringList.h"

namespace {

namespace fs = std::filesystem;

// The bundle is looked for once a process and beside the program, so one is laid there and left for the
// other tests that run at the same time.
class BundleTest : public testing::Test {
  protected:
    static void SetUpTestSuite() {
        fs::create_directories(resources());
        ASSERT_TRUE(
            platform::writeFileAtomically(resources() / "strings.ini", "[128]\n1=one \\t tab\n2=%s of %d\n"));
    }

    static fs::path folder() { return fs::read_symlink("/proc/self/exe").parent_path() / "Tellmar.saver"; }
    static fs::path resources() { return folder() / "resources"; }
};

TEST_F(BundleTest, ResourcesAreFoundBesideTheProgramAndNothingElseIs) {
    EXPECT_EQ(platform::bundlePath(), folder());
    EXPECT_EQ(platform::pathForResource("strings.ini"), resources() / "strings.ini");
    ASSERT_TRUE(platform::writeFileAtomically(folder() / "outside.txt", "text"));
    for (const char* name : {"none.html", "", ".", "..", "../outside.txt"})
        EXPECT_EQ(platform::pathForResource(name), "") << name;
}

TEST_F(BundleTest, StringsComeFromTheResources) {
    EXPECT_EQ(platform::stringFromList(128, 1), "one \t tab");
    EXPECT_EQ(platform::stringFromList(128, 2), "%s of %d");
    EXPECT_EQ(platform::stringFromList(128, 3), "");
    EXPECT_EQ(platform::stringFromList(129, 1), "");
}

}  // namespace
