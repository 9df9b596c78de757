#include "idle/Saver.h"

#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <cstring>
#include <utility>

#include "idle/Report.h"

namespace {

constexpr std::chrono::seconds kMaxWait{10};

void unblockSignals() {
    sigset_t none;
    sigemptyset(&none);
    sigprocmask(SIG_SETMASK, &none, nullptr);
}

}  // namespace

Saver::Saver(EventLoop& loop, std::vector<std::string> command, std::function<void()> onEnd)
    : mLoop(loop),
      mCommand(std::move(command)),
      mOnEnd(std::move(onEnd)),
      mPatience(loop, [this] { kill(-mProcess, SIGKILL); }) {}

Saver::~Saver() {
    if (isRunning()) end();
}

void Saver::start() {
    const pid_t parent = getpid();
    const pid_t process = fork();
    if (process == 0) run(parent);
    if (process < 0) return report(std::string("cannot start the saver: ") + std::strerror(errno));
    mProcess = process;
    mIsToEnd = false;
    sd_event_source* watch = nullptr;
    sd_event_add_child(mLoop.handle(), &watch, process, WEXITED, hasEnded, this);
    mWatch.reset(watch);
}

// In the new process, which gets a group of its own, so that all of it can be killed.
void Saver::run(pid_t parent) {
    prctl(PR_SET_PDEATHSIG, SIGTERM);
    if (getppid() != parent) _exit(1);
    setpgid(0, 0);
    unblockSignals();
    std::vector<char*> arguments;
    for (std::string& argument : mCommand) arguments.push_back(argument.data());
    arguments.push_back(nullptr);
    execv(arguments[0], arguments.data());
    report(mCommand[0] + ": " + std::strerror(errno));
    _exit(127);
}

// A stopped process ends only once it continues.
void Saver::end() {
    kill(mProcess, SIGTERM);
    kill(mProcess, SIGCONT);
    mIsToEnd = true;
    mPatience.start(kMaxWait);
}

int Saver::hasEnded(sd_event_source*, const siginfo_t*, void* self) {
    auto* saver = static_cast<Saver*>(self);
    saver->mProcess = 0;
    saver->mPatience.stop();
    saver->mOnEnd();
    return 0;
}
