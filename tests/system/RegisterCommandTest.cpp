#include "program/RegisterCommand.h"

#include <gmock/gmock.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>

#include "tests/TemporaryFolder.h"

namespace {

namespace fs = std::filesystem;
using testing::HasSubstr;

constexpr char kCommand[] = "tellmar --root", kFile[] = "settings", kCopy[] = "settings.bak";
constexpr char kText[] = "timeout:\t0:05:00\nprograms:\t\\\n\tmaze --root \\n\\\n\n";

class RegisterCommandTest : public testing::Test {
  protected:
    // Each expects that status and returns what was said, on either stream.
    static std::string add(int status = 0, const std::string& file = kFile, const char* command = kCommand) {
        testing::internal::CaptureStdout();
        testing::internal::CaptureStderr();
        EXPECT_EQ(registerSaver(file, command), status);
        return testing::internal::GetCapturedStdout() + testing::internal::GetCapturedStderr();
    }
    static std::string remove(int status = 0, const std::string& file = kFile) {
        testing::internal::CaptureStdout();
        testing::internal::CaptureStderr();
        EXPECT_EQ(unregisterSaver(file), status);
        return testing::internal::GetCapturedStdout() + testing::internal::GetCapturedStderr();
    }

    const TemporaryFolder mCurrentFolder;
};

TEST_F(RegisterCommandTest, TellmarIsAddedAndTakenOutOnceAndTheFilesFromBeforeAreKept) {
    std::ofstream(kFile) << kText;
    ASSERT_EQ(chmod(kFile, 0600), 0);
    std::string said = add();
    EXPECT_THAT(said, HasSubstr("is now listed in settings"));
    EXPECT_THAT(said, HasSubstr("settings.bak.\n"));
    const std::string text = contentsOf(kFile);
    EXPECT_THAT(text, HasSubstr(kCommand));
    EXPECT_EQ(contentsOf(kCopy), kText);
    EXPECT_EQ(fs::status(kCopy).permissions(), fs::perms::owner_read | fs::perms::owner_write);
    EXPECT_THAT(add(), HasSubstr("nothing was changed"));
    EXPECT_EQ(contentsOf(kFile), text);
    EXPECT_EQ(filesIn(), 2);

    EXPECT_THAT(remove(), HasSubstr("is no longer listed in"));
    EXPECT_EQ(contentsOf(kFile), kText);
    EXPECT_EQ(contentsOf("settings.bak.1"), text);
    EXPECT_THAT(remove(), HasSubstr("nothing was changed"));
    EXPECT_THAT(add(), HasSubstr("settings.bak.\n"));  // it holds the same
    EXPECT_EQ(filesIn(), 3);
}

TEST_F(RegisterCommandTest, AFileIsMadeForAddingAloneAndWhatIsSwitchedOffStaysSo) {
    remove();
    EXPECT_EQ(filesIn(), 0);
    add();
    EXPECT_THAT(contentsOf(kFile), HasSubstr(kCommand));
    EXPECT_EQ(filesIn(), 1);

    std::ofstream(kFile) << "programs: - tellmar\n";
    EXPECT_THAT(add(), HasSubstr("switched off"));
    EXPECT_EQ(contentsOf(kFile), "programs: - tellmar\n");
}

TEST_F(RegisterCommandTest, AFileThatCannotBeReadIsLeftAlone) {
    fs::create_symlink("nowhere", "dangling");
    fs::create_directory("folder");
    ASSERT_EQ(mkfifo("pipe", 0600), 0);
    const std::string text = "lock:\tTrue\r\nprograms:\t\\\r\n\ttellmar \\n\\\r\n\r\n";
    std::ofstream("foreign") << text;
    std::ofstream("secret") << kText;
    ASSERT_EQ(chmod("secret", 0), 0);
    for (const auto& [name, reason] : {std::pair{"dangling", "cannot be read"},
                                       {"folder", "cannot be read"},
                                       {"pipe", "cannot be read"},
                                       {"secret", "cannot be read"},
                                       {"foreign", "CR LF"}}) {
        if (geteuid() == 0 && name == std::string("secret")) continue;  // root may read everything
        EXPECT_THAT(add(1, name), HasSubstr(reason)) << name;
        EXPECT_THAT(remove(1, name), HasSubstr(reason)) << name;
    }
    EXPECT_EQ(contentsOf("foreign"), text);
    EXPECT_TRUE(fs::is_symlink("dangling"));
    EXPECT_EQ(filesIn(), 5);
}

TEST_F(RegisterCommandTest, WithoutACopyOrAPlaceNothingIsChanged) {
    std::ofstream(kFile) << kText;
    for (int number = 0; number < 100; ++number)
        std::ofstream(kCopy + (number ? "." + std::to_string(number) : "")) << std::to_string(number);
    EXPECT_THAT(add(1), HasSubstr("cannot be copied"));
    EXPECT_EQ(contentsOf(kFile), kText);
    EXPECT_THAT(add(1, "none/settings"), HasSubstr("cannot be written"));
    for (const auto& [file, command] : {std::pair{"", kCommand}, {"new", ""}}) add(1, file, command);
    EXPECT_EQ(filesIn(), 101);
}

TEST_F(RegisterCommandTest, TheFileLiesInTheHomeFolderAndTheCommandHoldsTheProgramsPath) {
    const std::string home = std::getenv("HOME") ? std::getenv("HOME") : "";
    setenv("HOME", "/somewhere", 1);
    EXPECT_EQ(xscreensaverFile(), "/somewhere/.xscreensaver");
    unsetenv("HOME");
    EXPECT_THAT(xscreensaverFile(), testing::EndsWith("/.xscreensaver"));
    if (!home.empty()) setenv("HOME", home.c_str(), 1);

    const std::string program = fs::read_symlink("/proc/self/exe");
    EXPECT_EQ(saverCommand(), program.find(' ') == program.npos ? program + " --root" : "");
}

}  // namespace
