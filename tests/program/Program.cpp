#include "tests/program/Program.h"

#include <csignal>
#include <filesystem>
#include <fstream>

#include "tests/program/ProcessTree.h"
#include "tests/program/Waiting.h"

namespace fs = std::filesystem;

int countOf(const std::string& text, const std::string& part) {
    int count = 0;
    for (auto at = text.find(part); at != std::string::npos; at = text.find(part, at + part.size())) ++count;
    return count;
}

Program::Program() : executable(TELLMAR_PROGRAM) {
    for (const char* name : {"home", "settings", "temporary"}) fs::create_directory(path(name));
    environment = {{"PATH", "/usr/local/bin:/usr/bin:/bin"},
                   {"LANG", "C.UTF-8"},
                   {"TZ", "UTC"},
                   {"NO_AT_BRIDGE", "1"},
                   {"HOME", path("home")},
                   {"XDG_CONFIG_HOME", path("settings")},
                   {"XDG_RUNTIME_DIR", path("temporary")},
                   {"TMPDIR", path("temporary")}};
}

Program::Program(const TestDisplay& display) : Program() { environment["DISPLAY"] = display.name(); }

Program::~Program() {
    if (!mChild) return;
    const std::vector<pid_t> family = descendants(mChild->id());
    signal(SIGTERM);  // so that it can tidy up
    waitForStatus();
    mChild.reset();
    for (const pid_t each : family) kill(each, SIGKILL);
}

void Program::start(const std::vector<std::string>& arguments) {
    std::vector<std::string> command{executable};
    command.insert(command.end(), arguments.begin(), arguments.end());
    Child::Place place{mFolder.path(), {}, path("stdout"), path("stderr")};
    for (const auto& [name, value] : environment) place.environment.push_back(name + "=" + value);
    mChild = std::make_unique<Child>(command, place);
}

int Program::countLines(const std::string& text) const {
    std::ifstream file(path("stderr"));
    int count = 0;
    for (std::string line; std::getline(file, line);) count += line.find(text) != std::string::npos;
    return count;
}

bool Program::waitForLines(const std::string& text, int count) {
    waitUntil([&] { return countLines(text) >= count || !isRunning(); });
    return countLines(text) >= count;
}

std::optional<int> Program::waitForStatus() {
    waitUntil([this] { return !isRunning(); });
    return mChild->status();
}

std::optional<int> Program::run(const std::vector<std::string>& arguments) {
    start(arguments);
    return waitForStatus();
}

std::string Program::output() const { return contentsOf(path("stdout")); }

std::string Program::errors() const { return contentsOf(path("stderr")); }

std::vector<std::string> Program::temporaryFolders() const {
    std::vector<std::string> names;
    std::error_code error;
    for (const auto& entry : fs::directory_iterator(path("temporary"), error)) {
        const std::string name = entry.path().filename();
        if (name.starts_with("tellmar-")) names.push_back(name);
    }
    return names;
}
