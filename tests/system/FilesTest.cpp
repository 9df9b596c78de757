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

struct FilesTest : testing::Test {
    const TemporaryFolder mCurrentFolder;
};

TEST_F(FilesTest, WhatIsWrittenIsRead) {
    for (const std::string& data :
         {std::string("\0\r\n\xFF", 4) + std::string(200'000, 'x'), std::string()}) {
        EXPECT_TRUE(platform::writeFileAtomically("file", data));
        std::string read = "old";
        EXPECT_TRUE(platform::readFile("file", read));
        EXPECT_EQ(read, data);
    }
    EXPECT_EQ(filesIn(), 1);
}

TEST_F(FilesTest, AFailureLeavesNothing) {
    fs::create_directory("folder");
    for (const char* name : {"none", "folder", ""}) {
        std::string data = "old";
        EXPECT_FALSE(platform::readFile(name, data)) << name;
        EXPECT_EQ(data, "");
    }
    for (const char* name : {"none/file", "folder"})
        EXPECT_FALSE(platform::writeFileAtomically(name, "text")) << name;
    EXPECT_EQ(filesIn(), 1);
}

TEST_F(FilesTest, AReplacedFileKeepsItsRights) {
    constexpr auto kRights = fs::perms::owner_read | fs::perms::owner_write | fs::perms::group_read;
    ASSERT_TRUE(platform::writeFileAtomically("file", "old"));
    fs::permissions("file", kRights);
    fs::create_symlink("file", "link");
    EXPECT_TRUE(platform::writeFileAtomically("link", "new"));
    EXPECT_TRUE(fs::is_symlink("link"));
    EXPECT_EQ(contentsOf("file"), "new");
    EXPECT_EQ(fs::status("file").permissions(), kRights);
}

using FilesDeathTest = FilesTest;

TEST_F(FilesDeathTest, TheTemporaryFolderLivesAsLongAsItsProcess) {
    fs::create_directory("run");
    const std::string run = mCurrentFolder.path("run"), none = mCurrentFolder.path("none");
    // In a child, which ends by itself and says where its folder lay.
    const auto useFolder = [](const std::string& runtime, const std::string& temporary) {
        setenv("XDG_RUNTIME_DIR", runtime.c_str(), 1);
        setenv("TMPDIR", temporary.c_str(), 1);
        fs::remove(platform::temporaryDirectory());  // somebody tidies it away
        const std::string folder = platform::temporaryDirectory();
        std::ofstream(folder + "/page.html") << "page";
        if (fork() == 0) std::exit(0);
        wait(nullptr);
        const bool isPrivate = (fs::status(folder).permissions() & fs::perms::all) == fs::perms::owner_all;
        const bool isThere = filesIn(folder) == 1 && platform::temporaryDirectory() == folder;
        std::fprintf(stderr, "%s\n", folder.c_str());
        std::exit(isPrivate && isThere ? 3 : 4);
    };
    const std::string cases[][3] = {{run, none, run}, {none, "run", "/tmp"}, {none, run, run}};
    for (const auto& [runtime, temporary, parent] : cases) {
        EXPECT_EXIT(useFolder(runtime, temporary), testing::ExitedWithCode(3),
                    "^" + parent + "/tellmar-......\n");
        EXPECT_EQ(filesIn(run), 0);
    }
}

}  // namespace
