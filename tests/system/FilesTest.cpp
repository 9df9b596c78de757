#include "platform/Files.h"

#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>

#include "tests/TemporaryFolder.h"

namespace {

namespace fs = std::filesystem;

class FilesTest : public testing::Test {
  protected:
    static std::string contentOf(const std::string& path) {
        std::string data;
        EXPECT_TRUE(platform::readFile(path, data)) << path;
        return data;
    }
    static int filesIn(const std::string& path) {
        return static_cast<int>(std::distance(fs::directory_iterator(path), {}));
    }

    TemporaryFolder mFolder;
};

TEST_F(FilesTest, WhatIsWrittenIsRead) {
    for (const std::string& data :
         {std::string("\0\r\n\xFF", 4) + std::string(200'000, 'x'), std::string()}) {
        EXPECT_TRUE(platform::writeFileAtomically(mFolder.path("file"), data));
        EXPECT_EQ(contentOf(mFolder.path("file")), data);
    }
    EXPECT_EQ(filesIn("."), 1);
}

TEST_F(FilesTest, WhatCannotBeReadLeavesNoDataAndWhatCannotBeWrittenNothing) {
    for (const char* name : {"none", ".", ""}) {
        std::string data = "old";
        EXPECT_FALSE(platform::readFile(name, data)) << name;
        EXPECT_EQ(data, "");
    }
    fs::create_directory("folder");
    for (const char* name : {"none/file", "folder"})
        EXPECT_FALSE(platform::writeFileAtomically(mFolder.path(name), "text")) << name;
    EXPECT_EQ(filesIn("."), 1);
    EXPECT_TRUE(platform::isDirectory("folder"));
}

TEST_F(FilesTest, AReplacedFileKeepsItsRightsAndALinkItsTarget) {
    constexpr auto kRights = fs::perms::owner_read | fs::perms::owner_write | fs::perms::group_read;
    ASSERT_TRUE(platform::writeFileAtomically("file", "old"));
    fs::permissions("file", kRights);
    fs::create_symlink("file", "link");
    EXPECT_TRUE(platform::writeFileAtomically("link", "new"));
    EXPECT_TRUE(fs::is_symlink("link"));
    EXPECT_EQ(contentOf("file"), "new");
    EXPECT_EQ(fs::status("file").permissions(), kRights);
}

TEST_F(FilesTest, FinderInformationIsKeptWithTheFile) {
    ASSERT_TRUE(platform::writeFileAtomically("file", "text"));
    EXPECT_EQ(platform::finderInfo("file"), platform::FinderInfo{});
    EXPECT_FALSE(platform::setFinderInfo("none", {}));
    const platform::FinderInfo info = {'T', 'E', 'X', 'T'};
    if (!platform::setFinderInfo("file", info)) GTEST_SKIP() << "no extended attributes here";
    EXPECT_EQ(platform::finderInfo("file"), info);
}

// Asks for the folder in a child, which ends by itself and tells what it saw.
void makeTemporaryFile() {
    const std::string folder = platform::temporaryDirectory();
    std::ofstream(folder + "/page.html") << "page";
    fs::create_directory(folder + "/more");
    const bool isPrivate = (fs::status(folder).permissions() & fs::perms::all) == fs::perms::owner_all;
    const bool isStable = folder == platform::temporaryDirectory() && fs::exists(folder + "/page.html");
    std::fprintf(stderr, "%s%s%s\n", folder.c_str(), isPrivate ? " private" : "", isStable ? " stable" : "");
    std::exit(3);
}

using FilesDeathTest = FilesTest;

TEST_F(FilesDeathTest, TheTemporaryFolderIsPrivateRemovedAtExitAndLiesWhereTheEnvironmentSays) {
    fs::create_directory("run");
    const std::string run = mFolder.path("run"), none = mFolder.path("none");
    const std::string cases[][3] = {// XDG_RUNTIME_DIR, TMPDIR, where the folder lies
                                    {run, none, run},
                                    {none, "relative", "/tmp"},
                                    {none, run, run}};
    for (const auto& [runtime, temporary, parent] : cases) {
        setenv("XDG_RUNTIME_DIR", runtime.c_str(), 1);
        setenv("TMPDIR", temporary.c_str(), 1);
        EXPECT_EXIT(makeTemporaryFile(), testing::ExitedWithCode(3),
                    "^" + parent + "/tellmar-...... private stable\n");
        EXPECT_EQ(filesIn(run), 0);
    }
    unsetenv("XDG_RUNTIME_DIR");
    unsetenv("TMPDIR");
}

TEST_F(FilesDeathTest, TheTemporaryFolderIsMadeAgainAndSurvivesAForkedProcess) {
    const auto run = [] {
        fs::remove(platform::temporaryDirectory());
        const std::string folder = platform::temporaryDirectory();
        const pid_t child = fork();
        if (child == 0) std::exit(0);
        waitpid(child, nullptr, 0);
        std::exit(platform::isDirectory(folder) ? 4 : 5);
    };
    EXPECT_EXIT(run(), testing::ExitedWithCode(4), "");
}

}  // namespace
