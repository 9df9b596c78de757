#include "tests/program/ProcessTree.h"

#include <cstddef>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <utility>

namespace {

namespace fs = std::filesystem;

std::string contents(pid_t process, const char* file) {
    std::ifstream stream("/proc/" + std::to_string(process) + "/" + file);
    std::ostringstream text;
    text << stream.rdbuf();  // unlike an iterator throws nothing when the process ends meanwhile
    return text.str();
}

struct State {
    char letter = 'X';
    pid_t parent = 0;
};

State state(pid_t process) {
    State found;
    const std::string text = contents(process, "stat");
    const auto name = text.rfind(')');  // the name before it may hold anything
    if (name != std::string::npos) std::istringstream(text.substr(name + 1)) >> found.letter >> found.parent;
    return found;
}

std::vector<pid_t> allProcesses() {
    std::vector<pid_t> all;
    std::error_code error;
    for (const auto& entry : fs::directory_iterator("/proc", error)) {
        const std::string name = entry.path().filename();
        if (name.find_first_not_of("0123456789") == std::string::npos) all.push_back(std::stoi(name));
    }
    return all;
}

}  // namespace

bool isRunning(pid_t process) {
    const char letter = state(process).letter;
    return letter != 'X' && letter != 'Z';
}

std::vector<pid_t> descendants(pid_t process) {
    std::vector<std::pair<pid_t, pid_t>> parents;  // process and its parent
    for (const pid_t each : allProcesses())
        if (isRunning(each)) parents.emplace_back(each, state(each).parent);

    std::vector<pid_t> family{process};
    for (std::size_t i = 0; i < family.size(); ++i)
        for (const auto& [child, parent] : parents)
            if (parent == family[i]) family.push_back(child);
    family.erase(family.begin());
    return family;
}

std::vector<pid_t> descendantsRunning(pid_t process, const std::string& program) {
    std::vector<pid_t> found;
    for (const pid_t each : descendants(process)) {
        const std::string path = contents(each, "cmdline").c_str();
        if (fs::path(path).filename() == program) found.push_back(each);
    }
    return found;
}
