// tellmar-idle MINUTES [OPTION]...: runs the saver whenever nobody has used the session for that time.

#include <cstdio>
#include <filesystem>
#include <string>
#include <vector>

#include "idle/Bus.h"
#include "idle/EventLoop.h"
#include "idle/IdleTime.h"
#include "idle/Report.h"
#include "idle/SessionName.h"
#include "idle/Waiter.h"

namespace {

constexpr char kUsage[] = R"(Usage: tellmar-idle MINUTES [OPTION]...
Starts tellmar --fullscreen, with these options, after MINUTES without input, and ends it at the next input.
One runs in a session, the latest; 0 minutes only end the one that runs.
)";

// The program lies beside this one.
std::string saverProgram() {
    std::error_code error;
    return std::filesystem::read_symlink("/proc/self/exe", error).parent_path() / "tellmar";
}

std::vector<std::string> saverCommand(int argc, char** argv) {
    std::vector<std::string> command = {saverProgram(), "--fullscreen"};
    command.insert(command.end(), argv + 2, argv + argc);
    return command;
}

int fail(int status, const char* reason) {
    report(reason);
    return status;
}

int wait(std::chrono::milliseconds time, const std::vector<std::string>& command) {
    EventLoop loop;
    Bus bus(loop);
    if (!bus.isOpen() && time.count() == 0) return fail(1, "there is no session bus, so none can be ended");
    if (!bus.isOpen()) report("there is no session bus, so it cannot know whether the session is locked");
    bus.takeName(sessionName(), [&loop] { loop.stop(); });
    if (time.count() == 0) return 0;

    Waiter waiter(loop, bus, command);
    if (!waiter.watch(time)) return fail(1, "this desktop does not report when it is idle");
    std::puts("waiting");  // for the program that started this one
    if (!std::freopen("/dev/null", "w", stdout)) return fail(1, "/dev/null cannot be opened");
    return loop.run();
}

}  // namespace

int main(int argc, char** argv) {
    if (argc < 2) return std::fputs(kUsage, stderr), 2;
    const std::string minutes = argv[1];
    if (minutes == "--help") return std::fputs(kUsage, stdout) < 0;
    if (minutes == "--version") return std::puts("tellmar-idle " TELLMAR_VERSION) < 0;
    const auto time = parseMinutes(minutes);
    if (!time) return fail(2, "takes a number of minutes from 0.01 to 1440, or 0 to end the one that runs");
    return wait(*time, saverCommand(argc, argv));
}
