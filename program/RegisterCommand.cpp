#include "program/RegisterCommand.h"

#include <glib.h>
#include <pwd.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <optional>
#include <system_error>

#include "platform/Files.h"
#include "platform/Log.h"
#include "platform/linux/Handles.h"
#include "program/XScreenSaverFile.h"

namespace {

namespace fs = std::filesystem;

// XScreenSaver looks here for programs that are named without a folder.
constexpr char kHostFolder[] = "/usr/libexec/xscreensaver";
constexpr int kMaxCopies = 100;

constexpr char kSwitchedOffHint[] = "XScreenSaver's settings can switch it on.\n";
constexpr char kChoiceHint[] =
    "XScreenSaver remembers savers by position: if it is set to show a single one, choose that one again.\n";

bool exists(const std::string& path) {
    std::error_code error;
    return fs::symlink_status(path, error).type() != fs::file_type::not_found;
}

bool isRegularFile(const std::string& path) {
    std::error_code error;
    return fs::is_regular_file(path, error);
}

int fail(const std::string& file, const char* reason) {
    platform::log(file + " " + reason + "; nothing was changed");
    return 1;
}

std::optional<XScreenSaverFile> load(const std::string& file) {
    if (!exists(file)) return XScreenSaverFile("");
    std::string text;
    if (!isRegularFile(file) || !platform::readFile(file, text)) {
        fail(file, "cannot be read");
        return std::nullopt;
    }
    XScreenSaverFile settings(text);
    if (settings.hasForeignLineEnds()) {
        fail(file, "has lines that end in CR LF, which XScreenSaver cannot read");
        return std::nullopt;
    }
    return settings;
}

bool haveSameContents(const std::string& one, const std::string& other) {
    std::string first, second;
    return isRegularFile(other) && platform::readFile(one, first) && platform::readFile(other, second) &&
           first == second;
}

// The path of a copy, perhaps an older one with the same contents. Empty when no copy could be made.
std::string keepCopy(const std::string& file) {
    for (int number = 0; number < kMaxCopies; ++number) {
        const std::string copy = file + ".bak" + (number ? "." + std::to_string(number) : "");
        std::error_code error;
        if (!exists(copy)) return fs::copy_file(file, copy, error) ? copy : "";
        if (haveSameContents(file, copy)) return copy;
    }
    return "";
}

int save(const std::string& file, const XScreenSaverFile& settings, const char* done) {
    std::string copy;
    if (exists(file) && (copy = keepCopy(file)).empty()) return fail(file, "cannot be copied");
    if (!platform::writeFileAtomically(file, settings.text())) return fail(file, "cannot be written");
    std::printf("Tellmar %s %s.\n", done, file.c_str());
    if (!copy.empty()) std::printf("The old file was kept as %s.\n", copy.c_str());
    return 0;
}

int leave(const std::string& file, const char* reason, const char* hint = "") {
    std::printf("Tellmar %s %s; nothing was changed.\n%s", reason, file.c_str(), hint);
    return 0;
}

// XScreenSaver splits its lines at blanks, and passes lines with certain characters to a shell.
bool canBeListed(const std::string& path) {
    return path.find_first_not_of("abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789/._+-@,") ==
           std::string::npos;
}

}  // namespace

std::string xscreensaverFile() {
    const char* home = std::getenv("HOME");
    if (!home || !*home) {
        const passwd* user = getpwuid(getuid());
        home = user ? user->pw_dir : "";
    }
    return *home ? std::string(home) + "/.xscreensaver" : "";
}

std::string saverCommand() {
    std::error_code error;
    const fs::path program = fs::read_symlink("/proc/self/exe", error);
    const std::string name = program.parent_path() == kHostFolder ? program.filename() : program;
    return name.empty() || !canBeListed(name) ? "" : name + " --root";
}

int registerSaver(const std::string& file, const std::string& command) {
    if (file.empty()) return fail("the home folder", "is unknown");
    if (command.empty())
        return fail("the program's path", "contains characters that XScreenSaver's list does not allow");
    auto settings = load(file);
    if (!settings) return 1;
    switch (settings->place()) {
        case XScreenSaverFile::Place::Listed:
            return leave(file, "is already listed in");
        case XScreenSaverFile::Place::SwitchedOff:
            return leave(file, "is listed but switched off in", kSwitchedOffHint);
        case XScreenSaverFile::Place::None:
            break;
    }
    const bool movesChoice = settings->addingMovesChoice();
    settings->add(command);
    const int status = save(file, *settings, "is now listed in");
    if (status == 0 && movesChoice) std::fputs(kChoiceHint, stdout);
    return status;
}

int unregisterSaver(const std::string& file) {
    if (file.empty()) return fail("the home folder", "is unknown");
    auto settings = load(file);
    if (!settings) return 1;
    if (settings->place() == XScreenSaverFile::Place::None) return leave(file, "is not listed in");
    const bool movesChoice = settings->removingMovesChoice();
    settings->remove();
    const int status = save(file, *settings, "is no longer listed in");
    if (status == 0 && movesChoice) std::fputs(kChoiceHint, stdout);
    return status;
}

const char* nextStep() {
    const platform::GText dialog(g_find_program_in_path("xscreensaver-settings"));
    return dialog ? "Next, choose it there: xscreensaver-settings\n"
                  : "XScreenSaver is not installed. Without it, tellmar --idle 3 starts Tellmar after three "
                    "minutes "
                    "without input.\n";
}
