#include "platform/Files.h"

#include <gtest/gtest.h>
#include <sys/stat.h>
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
    static unsigned modeOf(const std::string& path) {
        struct stat info {};
        stat(path.c_str(), &info);
        return info.st_mode & 07777;
    }
    static int filesIn(const std::string& path) {
        return static_cast<int>(std::distance(fs::directory_iterator(path), {}));
    }

    TemporaryFolder mFolder;
};

using FilesDeathTest = FilesTest;

TEST_F(FilesTest, WhatIsWrittenIsRead) {
    const std::string data = std::string("\0\r\n\xFF", 4) + std::string(200'000, 'x');
    EXPECT_TRUE(platform::writeFileAtomically(mFolder.path("file"), data));
    EXPECT_EQ(contentOf(mFolder.path("file")), data);
    EXPECT_TRUE(platform::writeFileAtomically(mFolder.path("file"), ""));
    EXPECT_EQ(contentOf(mFolder.path("file")), "");
    EXPECT_EQ(filesIn(mFolder.path()), 1);
}

TEST_F(FilesTest, WhatCannotBeReadLeavesNoData) {
    for (const char* name : {"none", ".", ""}) {
        std::string data = "old";
        EXPECT_FALSE(platform::readFile(name, data)) << name;
        EXPECT_EQ(data, "");
    }
}

TEST_F(FilesTest, AWriteThatFailsLeavesNothingBehind) {
    EXPECT_FALSE(platform::writeFileAtomically(mFolder.path("none/file"), "text"));
    fs::create_directory("folder");
    EXPECT_FALSE(platform::writeFileAtomically(mFolder.path("folder"), "text"));
    EXPECT_EQ(filesIn(mFolder.path()), 1);
    EXPECT_TRUE(platform::isDirectory("folder"));
}

TEST_F(FilesTest, AReplacedFileKeepsItsRightsAndALinkItsTarget) {
    ASSERT_TRUE(platform::writeFileAtomically("file", "old"));
    ASSERT_EQ(chmod("file", 0640), 0);
    fs::create_symlink("file", "link");
    EXPECT_TRUE(platform::writeFileAtomically("link", "new"));
    EXPECT_TRUE(fs::is_symlink("link"));
    EXPECT_EQ(contentOf("file"), "new");
    EXPECT_EQ(modeOf("file"), 0640u);
}

TEST_F(FilesTest, FinderInformationIsKeptWithTheFile) {
    ASSERT_TRUE(platform::writeFileAtomically("file", "text"));
    EXPECT_EQ(platform::finderInfo("file"), platform::FinderInfo{});
    EXPECT_EQ(platform::finderInfo("none"), platform::FinderInfo{});
    EXPECT_FALSE(platform::setFinderInfo("none", {}));
    const platform::FinderInfo info = {'T', 'E', 'X', 'T'};
    if (!platform::setFinderInfo("file", info)) GTEST_SKIP() << "no extended attributes here";
    EXPECT_EQ(platform::finderInfo("file"), info);
}

// Each of these asks for the folder in a child, which ends by itself, and looks at what the child leaves.
void makeTemporaryFile() {
    const std::string folder = platform::temporaryDirectory();
    std::ofstream(folder + "/page.html") << "page";
    fs::create_directory(folder + "/more");
    const bool isPrivate = (fs::status(folder).permissions() & fs::perms::all) == fs::perms::owner_all;
    const bool isStable = folder == platform::temporaryDirectory() && fs::exists(folder + "/page.html");
    std::fprintf(stderr, "%s%s%s\n", folder.c_str(), isPrivate ? " private" : "", isStable ? " stable" : "");
    std::exit(3);
}

TEST_F(FilesDeathTest, TheTemporaryFolderIsPrivateAndRemovedAtExit) {
    const std::string parent = mFolder.path("run");
    fs::create_directory(parent);
    setenv("XDG_RUNTIME_DIR", parent.c_str(), 1);
    EXPECT_EXIT(makeTemporaryFile(), testing::ExitedWithCode(3),
                "^" + parent + "/tellmar-...... private stable\n");
    EXPECT_EQ(filesIn(parent), 0);
    unsetenv("XDG_RUNTIME_DIR");
}

TEST_F(FilesDeathTest, WithoutARuntimeFolderTheTemporaryOneLiesElsewhere) {
    setenv("XDG_RUNTIME_DIR", mFolder.path("none").c_str(), 1);
    setenv("TMPDIR", "relative", 1);
    EXPECT_EXIT(makeTemporaryFile(), testing::ExitedWithCode(3), "^/tmp/tellmar-...... private stable\n");
    fs::create_directory("mine");
    setenv("TMPDIR", mFolder.path("mine").c_str(), 1);
    EXPECT_EXIT(makeTemporaryFile(), testing::ExitedWithCode(3), "/mine/tellmar-...... private stable\n");
    EXPECT_EQ(filesIn("mine"), 0);
    unsetenv("XDG_RUNTIME_DIR");
    unsetenv("TMPDIR");
}

TEST_F(FilesDeathTest, AFolderTidiedAwayIsMadeAgain) {
    const auto run = [] {
        fs::remove(platform::temporaryDirectory());
        std::exit(platform::isDirectory(platform::temporaryDirectory()) ? 4 : 5);
    };
    EXPECT_EXIT(run(), testing::ExitedWithCode(4), "");
}

TEST_F(FilesDeathTest, AForkedProcessDoesNotRemoveTheFolder) {
    const auto run = [] {
        const std::string folder = platform::temporaryDirectory();
        const pid_t child = fork();
        if (child == 0) std::exit(0);
        waitpid(child, nullptr, 0);
        std::exit(platform::isDirectory(folder) ? 4 : 5);
    };
    EXPECT_EXIT(run(), testing::ExitedWithCode(4), "");
}

}  // namespace
