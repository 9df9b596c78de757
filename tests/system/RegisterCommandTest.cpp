#include "host/RegisterCommand.h"

#include <gmock/gmock.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>

#include "platform/Files.h"
#include "tests/TemporaryFolder.h"

namespace {

namespace fs = std::filesystem;
using testing::HasSubstr;

constexpr char kCommand[] = "tellmar --root";
constexpr char kText[] = "timeout:\t0:05:00\nprograms:\t\\\n\tmaze --root \\n\\\n\n";

class RegisterCommandTest : public testing::Test {
  protected:
    static void write(const std::string& path, const std::string& text) {
        ASSERT_TRUE(platform::writeFileAtomically(path, text));
    }
    static std::string read(const std::string& path) {
        std::string text;
        EXPECT_TRUE(platform::readFile(path, text)) << path;
        return text;
    }
    static int files() { return static_cast<int>(std::distance(fs::directory_iterator("."), {})); }

    int add() {
        return said([this] { return registerSaver(mFile, kCommand); });
    }
    int remove() {
        return said([this] { return unregisterSaver(mFile); });
    }

    const TemporaryFolder mFolder;
    const std::string mFile = mFolder.path("settings");
    std::string mSaid, mComplaint;

  private:
    template <typename Command>
    int said(const Command& command) {
        testing::internal::CaptureStdout();
        testing::internal::CaptureStderr();
        const int status = command();
        mSaid = testing::internal::GetCapturedStdout();
        mComplaint = testing::internal::GetCapturedStderr();
        return status;
    }
};

TEST_F(RegisterCommandTest, ItAddsTellmarOnceAndKeepsTheFileFromBefore) {
    write(mFile, kText);
    ASSERT_EQ(chmod(mFile.c_str(), 0600), 0);
    EXPECT_EQ(add(), 0);
    EXPECT_THAT(mSaid, HasSubstr("is now in the list of " + mFile));
    EXPECT_THAT(mSaid, HasSubstr(mFile + ".bak.\n"));
    const std::string text = read(mFile);
    EXPECT_THAT(text, HasSubstr(kCommand));
    EXPECT_EQ(read(mFile + ".bak"), kText);
    EXPECT_EQ(fs::status(mFile + ".bak").permissions(), fs::perms::owner_read | fs::perms::owner_write);

    EXPECT_EQ(add(), 0);
    EXPECT_THAT(mSaid, HasSubstr("nothing was changed"));
    EXPECT_EQ(read(mFile), text);
    EXPECT_EQ(files(), 2);
}

TEST_F(RegisterCommandTest, ItTakesTellmarOutOnce) {
    write(mFile, kText);
    add();
    EXPECT_EQ(remove(), 0);
    EXPECT_EQ(read(mFile), kText);
    EXPECT_THAT(mSaid, HasSubstr("is no longer in the list"));
    EXPECT_EQ(remove(), 0);
    EXPECT_THAT(mSaid, HasSubstr("nothing was changed"));
    EXPECT_EQ(files(), 3);
}

TEST_F(RegisterCommandTest, AFileIsMadeForAddingAlone) {
    EXPECT_EQ(remove(), 0);
    EXPECT_EQ(files(), 0);
    EXPECT_EQ(add(), 0);
    EXPECT_THAT(read(mFile), HasSubstr(kCommand));
    EXPECT_EQ(files(), 1);
}

TEST_F(RegisterCommandTest, AnOlderCopyStaysAndOneThatHoldsTheSameServes) {
    write(mFile, kText);
    write(mFile + ".bak", "an older one");
    add();
    EXPECT_EQ(read(mFile + ".bak"), "an older one");
    EXPECT_EQ(read(mFile + ".bak.1"), kText);
    write(mFile, kText);
    add();
    EXPECT_THAT(mSaid, HasSubstr(".bak.1.\n"));
    EXPECT_EQ(files(), 3);
}

TEST_F(RegisterCommandTest, WhatIsSwitchedOffStaysSo) {
    write(mFile, "programs: - tellmar\n");
    EXPECT_EQ(add(), 0);
    EXPECT_THAT(mSaid, HasSubstr("switched off"));
    EXPECT_EQ(read(mFile), "programs: - tellmar\n");
}

TEST_F(RegisterCommandTest, ALinkStaysALink) {
    write("dotfile", kText);
    fs::create_symlink("dotfile", mFile);
    EXPECT_EQ(add(), 0);
    EXPECT_TRUE(fs::is_symlink(mFile));
    EXPECT_THAT(read("dotfile"), HasSubstr(kCommand));
    EXPECT_EQ(read(mFile + ".bak"), kText);
}

TEST_F(RegisterCommandTest, AFileThatXScreenSaverCannotReadIsLeftAlone) {
    const std::string text = "lock:\tTrue\r\nprograms:\t\\\r\n\ttellmar \\n\\\r\n\r\n";
    write(mFile, text);
    EXPECT_EQ(add(), 1);
    EXPECT_EQ(remove(), 1);
    EXPECT_THAT(mComplaint, HasSubstr("CR LF"));
    EXPECT_EQ(read(mFile), text);
    EXPECT_EQ(files(), 1);
}

TEST_F(RegisterCommandTest, WhatIsNoReadableFileIsLeftAlone) {
    fs::create_symlink("nowhere", "dangling");
    fs::create_directory("folder");
    ASSERT_EQ(mkfifo("pipe", 0600), 0);
    for (const char* name : {"dangling", "folder", "pipe"}) {
        testing::internal::CaptureStderr();
        EXPECT_EQ(registerSaver(name, kCommand), 1) << name;
        EXPECT_EQ(unregisterSaver(name), 1) << name;
        EXPECT_THAT(testing::internal::GetCapturedStderr(), HasSubstr("cannot be read"));
    }
    EXPECT_EQ(files(), 3);
    EXPECT_TRUE(fs::is_symlink("dangling"));
}

TEST_F(RegisterCommandTest, AFileWithoutRightsIsLeftAlone) {
    if (geteuid() == 0) GTEST_SKIP() << "root may read everything";
    write(mFile, kText);
    ASSERT_EQ(chmod(mFile.c_str(), 0), 0);
    EXPECT_EQ(add(), 1);
    EXPECT_EQ(remove(), 1);
    EXPECT_EQ(files(), 1);
}

TEST_F(RegisterCommandTest, WithoutACopyNothingIsChanged) {
    write(mFile, kText);
    for (int number = 0; number < 100; ++number)
        write(mFile + ".bak" + (number ? "." + std::to_string(number) : ""), std::to_string(number));
    EXPECT_EQ(add(), 1);
    EXPECT_THAT(mComplaint, HasSubstr("cannot be copied"));
    EXPECT_EQ(read(mFile), kText);
}

TEST_F(RegisterCommandTest, AFolderThatIsMissingIsReported) {
    testing::internal::CaptureStderr();
    EXPECT_EQ(registerSaver(mFolder.path("none/settings"), kCommand), 1);
    EXPECT_EQ(registerSaver("", kCommand), 1);
    EXPECT_EQ(registerSaver(mFile, ""), 1);
    EXPECT_THAT(testing::internal::GetCapturedStderr(), HasSubstr("cannot be written"));
    EXPECT_EQ(files(), 0);
}

TEST_F(RegisterCommandTest, TheFileLiesInTheHomeFolder) {
    const std::string home = std::getenv("HOME") ? std::getenv("HOME") : "";
    setenv("HOME", "/somewhere", 1);
    EXPECT_EQ(xscreensaverFile(), "/somewhere/.xscreensaver");
    unsetenv("HOME");
    EXPECT_THAT(xscreensaverFile(), testing::EndsWith("/.xscreensaver"));
    if (!home.empty()) setenv("HOME", home.c_str(), 1);
}

TEST_F(RegisterCommandTest, OutsideTheHostsFolderTheCommandHoldsThePath) {
    const std::string program = fs::read_symlink("/proc/self/exe");
    if (program.find(' ') == program.npos)
        EXPECT_EQ(saverCommand(), program + " --root");
    else
        EXPECT_EQ(saverCommand(), "");
}

}  // namespace
