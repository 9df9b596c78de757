#include "tests/program/Child.h"

#include <fcntl.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>

namespace {

std::vector<char*> pointers(const std::vector<std::string>& texts) {
    std::vector<char*> all;
    for (const std::string& text : texts) all.push_back(const_cast<char*>(text.c_str()));
    all.push_back(nullptr);
    return all;
}

void redirect(int descriptor, const std::string& path) {
    dup2(open(path.c_str(), O_WRONLY | O_CREAT | O_APPEND, 0600), descriptor);
}

}  // namespace

Child::Child(const std::vector<std::string>& command, const Place& place) {
    const std::vector<char*> arguments = pointers(command);
    const std::vector<char*> environment = pointers(place.environment);
    mId = fork();
    if (mId != 0) return;
    prctl(PR_SET_PDEATHSIG, SIGKILL);
    redirect(STDIN_FILENO, "/dev/null");
    redirect(STDOUT_FILENO, place.output);
    redirect(STDERR_FILENO, place.errors);
    if (chdir(place.folder.c_str()) == 0) execve(arguments[0], arguments.data(), environment.data());
    _exit(127);
}

Child::~Child() {
    if (status()) return;
    signal(SIGKILL);
    waitpid(mId, nullptr, 0);
}

void Child::signal(int number) {
    if (mId > 0 && !mStatus) kill(mId, number);
}

std::optional<int> Child::status() {
    int raw = 0;
    if (!mStatus && waitpid(mId, &raw, WNOHANG) == mId)
        mStatus = WIFEXITED(raw) ? WEXITSTATUS(raw) : -WTERMSIG(raw);
    return mStatus;
}
