#include "program/Restart.h"

#include <linux/close_range.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <system_error>

#include "platform/Log.h"

namespace {

bool isWanted = false;

// How many there are, those that have ended included.
int killChildren() {
    int count = 0;
    std::error_code error;
    for (const auto& thread : std::filesystem::directory_iterator("/proc/self/task", error)) {
        std::ifstream children(thread.path() / "children");
        for (pid_t child; children >> child; ++count) kill(child, SIGKILL);
    }
    return count;
}

// The pages' processes would end by themselves, but then nobody would wait for them.
void endChildren() {
    while (killChildren() > 0 && waitpid(-1, nullptr, 0) > 0) {
    }
}

void restartIfWanted() {
    if (!isWanted) return;
    std::vector<std::string> arguments = ownArguments();
    std::vector<char*> pointers;
    for (std::string& argument : arguments) pointers.push_back(argument.data());
    pointers.push_back(nullptr);
    endChildren();
    close_range(STDERR_FILENO + 1, ~0U, CLOSE_RANGE_CLOEXEC);  // not every library does that itself
    execv("/proc/self/exe", pointers.data());
    platform::log("cannot restart");
}

}  // namespace

std::vector<std::string> ownArguments() {
    std::ifstream file("/proc/self/cmdline", std::ios::binary);
    std::vector<std::string> arguments;
    for (std::string argument; std::getline(file, argument, '\0');) arguments.push_back(argument);
    return arguments;
}

// Functions registered first are called last: after static objects, such as the temporary folder, are gone.
void prepareToRestart() {
    std::atexit(restartIfWanted);
    prctl(PR_SET_NAME, "tellmar");  // started through /proc/self/exe, it would be named exe
}

void restartAtExit() { isWanted = true; }
