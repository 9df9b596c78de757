#include "platform/Files.h"

#include <gmock/gmock.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <fstream>

#include "platform/AdvisoryLock.h"
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

TEST_F(FilesTest, APrivateFileIsForThisUserAloneInAFolderOfTheirsAndNoLink) {
    const auto tryToLock = [] { return platform::AdvisoryLock("own/lock").tryToLock(); };
    using enum platform::AdvisoryLock::State;
    std::string data;
    ASSERT_TRUE(platform::makePrivateFolder("own"));
    std::ofstream("target") << "old";
    for (const char* name : {"own/file", "own/lock"}) fs::create_symlink("../target", name);
    EXPECT_EQ(tryToLock(), Unavailable);
    EXPECT_FALSE(platform::readPrivateFile("own/file", data));
    EXPECT_TRUE(platform::writePrivateFile("own/file", "text"));
    EXPECT_EQ(contentsOf("target"), "old");
    EXPECT_EQ(fs::status("own/file").permissions(), fs::perms::owner_read | fs::perms::owner_write);

    fs::remove("own/lock");
    EXPECT_EQ(tryToLock(), Held);
    fs::permissions("own", fs::perms::group_write, fs::perm_options::add);
    EXPECT_EQ(tryToLock(), Unavailable);
    EXPECT_FALSE(platform::readPrivateFile("own/file", data));
    EXPECT_FALSE(platform::writePrivateFile("own/file", "newer"));
}

TEST_F(FilesTest, OneLockIsHeldAtATime) {
    using State = platform::AdvisoryLock::State;
    ASSERT_TRUE(platform::makePrivateFolder("own"));
    platform::AdvisoryLock second("own/lock");
    {
        platform::AdvisoryLock first("own/lock");
        EXPECT_EQ(first.tryToLock(), State::Held);
        EXPECT_EQ(second.tryToLock(), State::TakenByAnother);
        first.setNote("for the others");
        EXPECT_EQ(second.note(), "for the others");
    }
    EXPECT_EQ(second.tryToLock(), State::Held);
}

TEST_F(FilesTest, TheUsersCacheIsWhereAnAbsolutePathSaysOrElseInTheHomeFolder) {
    setenv("XDG_CACHE_HOME", "/var/cache/mine", 1);
    EXPECT_EQ(platform::userCacheDirectory(), "/var/cache/mine");
    for (const char* other : {"", "relative"}) {
        setenv("XDG_CACHE_HOME", other, 1);
        EXPECT_THAT(platform::userCacheDirectory(), testing::MatchesRegex("/.*/\\.cache"));
    }
    unsetenv("XDG_CACHE_HOME");
}

using FilesDeathTest = FilesTest;

TEST_F(FilesDeathTest, TheTemporaryFolderLivesAsLongAsItsProcess) {
    fs::create_directory("run");
    const std::string run = mCurrentFolder.path("run"), none = mCurrentFolder.path("none");
    // In a child, which ends by itself and says where its folder lay.
    const auto useFolder = [](const std::string& runtime, const std::string& temporary) {
        setenv("XDG_RUNTIME_DIR", runtime.c_str(), 1);
        setenv("TMPDIR", temporary.c_str(), 1);
        fs::remove_all(platform::temporaryDirectory());  // somebody tidies it away
        const std::string folder = platform::temporaryDirectory();
        std::ofstream(folder + "/page.html") << "page";
        if (fork() == 0) std::exit(0);
        wait(nullptr);
        const bool isPrivate = (fs::status(folder).permissions() & fs::perms::all) == fs::perms::owner_all;
        const bool isThere = filesIn(folder) == 2 && platform::temporaryDirectory() == folder;
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

TEST_F(FilesDeathTest, ATemporaryFileIsPrivateAndGoesElsewhereWhenItsPlaceFails) {
    const auto writeAndTell = [] {
        fs::create_directory("run"), fs::create_directory("other");
        setenv("XDG_RUNTIME_DIR", fs::absolute("run").c_str(), 1);
        setenv("TMPDIR", fs::absolute("other").c_str(), 1);
        // From now on the first place takes neither the file nor another folder.
        fs::create_directory(platform::temporaryDirectory() + "/page.html");
        setenv("XDG_RUNTIME_DIR", "/nowhere", 1);
        const bool isWritten = platform::writeTemporaryFile("page.html", "text");
        const std::string path = platform::temporaryDirectory() + "/page.html";
        std::fprintf(stderr, "%d %o %s", isWritten, unsigned(fs::status(path).permissions()), path.c_str());
        std::exit(contentsOf(path) == "text" ? 3 : 4);
    };
    EXPECT_EXIT(writeAndTell(), testing::ExitedWithCode(3), "^1 600 .*/other/tellmar-....../page.html");
    EXPECT_EQ(filesIn("run") + filesIn("other"), 0);
}

TEST_F(FilesDeathTest, AFolderLeftBehindIsRemovedByTheNextProcessAndOneInUseIsNot) {
    setenv("XDG_RUNTIME_DIR", mCurrentFolder.path().c_str(), 1);
    fs::create_directory("tellmar-backup");
    // Starts a process that writes a file and then sends itself the signal.
    const auto start = [](int signal) {
        const pid_t child = fork();
        if (child == 0) std::exit(platform::writeTemporaryFile("page", "x") && raise(signal));
        waitpid(child, nullptr, WUNTRACED);
        return child;
    };
    start(SIGKILL);
    const pid_t user = start(SIGSTOP);
    EXPECT_EQ(filesIn(), 2);
    start(SIGKILL);
    EXPECT_EQ(filesIn(), 3);
    kill(user, SIGKILL);
    waitpid(user, nullptr, 0);
    start(SIGCONT);  // goes on to its end
    EXPECT_EQ(filesIn(), 1);
    unsetenv("XDG_RUNTIME_DIR");
}

}  // namespace
