#include "program/ChildProcess.h"

#include <fcntl.h>
#include <glib-unix.h>
#include <sys/prctl.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <utility>
#include <vector>

#include "platform/Log.h"
#include "program/Restart.h"

using platform::ErrorRef, platform::Handle;

namespace {

void endWithParent(gpointer parent) {
    prctl(PR_SET_PDEATHSIG, SIGTERM);
    if (getppid() != GPOINTER_TO_INT(parent)) _exit(1);
}

}  // namespace

std::unique_ptr<ChildProcess> ChildProcess::start(const char* variable, const std::string& value,
                                                  Events events) {
    std::vector<std::string> arguments = ownArguments();
    // The program's own file, whatever name it was started by.
    std::vector<char*> pointers = {const_cast<char*>("/proc/self/exe")};
    for (std::string& argument : arguments) pointers.push_back(argument.data());
    pointers.push_back(nullptr);

    const Handle<gchar*, g_strfreev> environment(
        g_environ_setenv(g_get_environ(), variable, value.c_str(), TRUE));
    GError* error = nullptr;
    GPid number = 0;
    int output = -1;
    g_spawn_async_with_pipes(nullptr, pointers.data(), environment.get(),
                             static_cast<GSpawnFlags>(G_SPAWN_DO_NOT_REAP_CHILD | G_SPAWN_FILE_AND_ARGV_ZERO),
                             endWithParent, GINT_TO_POINTER(getpid()), &number, nullptr, &output, nullptr,
                             &error);
    if (const ErrorRef owned(error); owned) {
        platform::log(owned->message);
        return nullptr;
    }
    return std::unique_ptr<ChildProcess>(new ChildProcess(number, output, std::move(events)));
}

ChildProcess::ChildProcess(pid_t process, int output, Events events)
    : mNumber(process), mOutput(output), mEvents(std::move(events)) {
    fcntl(output, F_SETFD, FD_CLOEXEC);
    g_unix_set_fd_nonblocking(output, TRUE, nullptr);
    mReadSource = g_unix_fd_add(
        output, static_cast<GIOCondition>(G_IO_IN | G_IO_HUP),
        [](gint, GIOCondition, gpointer self) -> gboolean {
            auto* child = static_cast<ChildProcess*>(self);
            if (child->readLines()) return G_SOURCE_CONTINUE;
            child->mReadSource = 0;
            return G_SOURCE_REMOVE;
        },
        this);
    mEndSource = g_child_watch_add(
        mNumber,
        [](GPid number, gint status, gpointer self) {
            auto* child = static_cast<ChildProcess*>(self);
            child->mEndSource = 0;
            child->readLines();
            const auto end = child->mEvents.end;  // outlives the child
            end(number, status);
        },
        this);
}

ChildProcess::~ChildProcess() {
    for (const unsigned source : {mReadSource, mEndSource})
        if (source) g_source_remove(source);
}

// Returns whether more may come.
bool ChildProcess::readLines() {
    char buffer[512];
    ssize_t count;
    while ((count = read(mOutput.number(), buffer, sizeof buffer)) > 0) {
        mText.append(buffer, static_cast<std::size_t>(count));
        for (std::size_t end; (end = mText.find('\n')) != mText.npos; mText.erase(0, end + 1))
            mEvents.line(mNumber, mText.substr(0, end));
    }
    return count < 0 && (errno == EAGAIN || errno == EINTR);
}

void ChildProcess::end() const {
    kill(mNumber, SIGTERM);
    kill(mNumber, SIGCONT);
}

void ChildProcess::endByForce() const { kill(mNumber, SIGKILL); }
