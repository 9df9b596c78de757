#include "program/RegisterCommand.h"

#include <gmock/gmock.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <functional>

#include "tests/TemporaryFolder.h"

namespace {

namespace fs = std::filesystem;
using testing::AnyOf, testing::HasSubstr, testing::Not;

constexpr char kCommand[] = "tellmar --root", kFile[] = "settings", kCopy[] = "settings.bak";
constexpr char kText[] = "selected:\t0\nprograms:\t\\\n\tmaze --root \\n\\\n\n";

class RegisterCommandTest : public testing::Test {
  protected:
    // Expects that status and returns what the command said, on either stream.
    static std::string said(int status, const std::function<int()>& command) {
        testing::internal::CaptureStdout();
        testing::internal::CaptureStderr();
        EXPECT_EQ(command(), status);
        return testing::internal::GetCapturedStdout() + testing::internal::GetCapturedStderr();
    }
    static std::string add(int status = 0, const std::string& file = kFile, const char* command = kCommand) {
        return said(status, [&] { return registerSaver(file, command); });
    }
    static std::string remove(int status = 0, const std::string& file = kFile) {
        return said(status, [&] { return unregisterSaver(file); });
    }

    const TemporaryFolder mCurrentFolder;
};

TEST_F(RegisterCommandTest, FilesFromBeforeAreKept) {
    std::ofstream(kFile) << kText;
    ASSERT_EQ(chmod(kFile, 0600), 0);
    EXPECT_EQ(add(), "Tellmar is now listed in settings.\nThe old file was kept as settings.bak.\n");
    const std::string text = contentsOf(kFile);
    EXPECT_THAT(text, HasSubstr(kCommand));
    EXPECT_EQ(contentsOf(kCopy), kText);
    EXPECT_EQ(fs::status(kCopy).permissions(), fs::perms::owner_read | fs::perms::owner_write);

    EXPECT_THAT(remove(), HasSubstr("is no longer listed in"));
    EXPECT_EQ(contentsOf(kFile), kText);
    EXPECT_EQ(contentsOf("settings.bak.1"), text);
    EXPECT_THAT(add(), HasSubstr("settings.bak.\n"));  // it holds the same
    EXPECT_EQ(filesIn(), 3);
}

TEST_F(RegisterCommandTest, WhatNeedsNoChangeIsLeftAlone) {
    EXPECT_THAT(remove(), HasSubstr("nothing was changed"));
    for (const auto& [line, reason] :
         {std::pair{"tellmar", "already listed"}, {"- tellmar", "switched off"}}) {
        std::ofstream(kFile) << "programs: " << line << "\n";
        EXPECT_THAT(add(), HasSubstr(reason));
        EXPECT_EQ(contentsOf(kFile), std::string("programs: ") + line + "\n");
    }
    EXPECT_EQ(filesIn(), 1);
}

TEST_F(RegisterCommandTest, AChoiceThatMovesIsPointedOut) {
    const auto hint = HasSubstr("choose that one again");
    std::ofstream(kFile) << "selected: 3\n";
    EXPECT_THAT(add(), hint);
    std::ofstream(kFile) << "selected: 3\nprograms: tellmar \\n a\n";
    EXPECT_THAT(remove(), hint);
    EXPECT_THAT(add(), Not(hint));
    EXPECT_THAT(remove(), Not(hint));
}

TEST_F(RegisterCommandTest, AFileThatCannotBeReadIsLeftAlone) {
    fs::create_symlink("nowhere", "dangling");
    ASSERT_EQ(mkfifo("pipe", 0600), 0);
    const std::string text = "lock:\tTrue\r\nprograms:\ttellmar\r\n";
    std::ofstream("foreign") << text;
    for (const char* name : {"dangling", "pipe", "foreign"}) {
        EXPECT_THAT(add(1, name), AnyOf(HasSubstr("cannot be read"), HasSubstr("CR LF"))) << name;
        EXPECT_THAT(remove(1, name), HasSubstr("nothing was changed")) << name;
    }
    EXPECT_EQ(contentsOf("foreign"), text);
    EXPECT_TRUE(fs::is_symlink("dangling"));
    EXPECT_EQ(filesIn(), 3);
}

TEST_F(RegisterCommandTest, WithoutACopyNothingIsChanged) {
    std::ofstream(kFile) << kText;
    for (int number = 0; number < 100; ++number)
        std::ofstream(kCopy + (number ? "." + std::to_string(number) : "")) << number;
    EXPECT_THAT(add(1), HasSubstr("cannot be copied"));
    EXPECT_EQ(contentsOf(kFile), kText);
}

TEST_F(RegisterCommandTest, WithoutAPlaceNothingIsWritten) {
    EXPECT_THAT(add(1, "none/settings"), HasSubstr("cannot be written"));
    EXPECT_THAT(add(1, ""), HasSubstr("home folder"));
    EXPECT_THAT(add(1, kFile, ""), HasSubstr("program's path"));
    EXPECT_EQ(filesIn(), 0);
    unsetenv("HOME");
    EXPECT_THAT(xscreensaverFile(), testing::EndsWith("/.xscreensaver"));  // as the system knows the user
}

}  // namespace
