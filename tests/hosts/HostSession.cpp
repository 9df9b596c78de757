#include "tests/hosts/HostSession.h"

#include <csignal>
#include <filesystem>
#include <fstream>

#include "tests/program/ProcessTree.h"
#include "tests/program/Program.h"
#include "tests/program/Waiting.h"

namespace fs = std::filesystem;

namespace {

constexpr char kEngines[] = "/usr/libexec/xscreensaver";
constexpr char kSockets[] = "/tmp/.X11-unix";

// The session outlives its host, so that a test can see what becomes of orphans.
constexpr char kSession[] =
    R"(dbus-daemon --session --fork --nosyslog --address="$DBUS_SESSION_BUS_ADDRESS"; "$@"; exec sleep 600)";

std::string programsFolder() { return fs::path(TELLMAR_PROGRAM).parent_path(); }

// A host keeps programs of its own in the folder of the savers, so these must be there too.
void linkHostPrograms(const std::string& from, const std::string& to) {
    for (const auto& entry : fs::directory_iterator(kEngines)) {
        const std::string name = entry.path().filename();
        if (name.starts_with("xscreensaver")) fs::create_symlink(from + "/" + name, to + "/" + name);
    }
}

int statusOf(Child& child) {
    waitUntil([&] { return child.status().has_value(); });
    return child.status().value_or(-1);
}

int runPlain(const std::vector<std::string>& command) {
    Child child(command, {"/", {"PATH=/usr/bin:/bin"}, "/dev/null", "/dev/null"});
    return statusOf(child);
}

std::vector<std::string> partsOf(pid_t process, const char* file) {
    std::vector<std::string> parts;
    std::ifstream stream("/proc/" + std::to_string(process) + "/" + file);
    for (std::string part; std::getline(stream, part, '\0');) parts.push_back(part);
    return parts;
}

}  // namespace

std::string HostSession::obstacle(const std::vector<std::string>& programs) {
    for (const std::string& program : programs)
        if (!fs::exists("/usr/bin/" + program)) return program + " is not installed";
    if (!fs::is_directory(kEngines)) return std::string(kEngines) + " does not exist";
    if (runPlain({"/usr/bin/bwrap", "--dev-bind", "/", "/", "--unshare-user", "--unshare-pid", "true"}) != 0)
        return "bwrap cannot make a session of its own here";
    return "";
}

HostSession::HostSession(const TestDisplay& display) {
    for (const char* name : {"home", "engines", "hidden", "temporary"})
        fs::create_directory(mFolder.path(name));
    fs::create_symlink(TELLMAR_PROGRAM, mFolder.path("engines/tellmar"));
    linkHostPrograms(mFolder.path("hidden"), mFolder.path("engines"));
    environment = {
        {"DISPLAY", display.name()},      {"HOME", mFolder.path("home")},
        {"PATH", "/usr/bin:/bin"},        {"LANG", "C.UTF-8"},
        {"GSETTINGS_BACKEND", "keyfile"}, {"DBUS_SESSION_BUS_ADDRESS", "unix:path=" + mFolder.path("bus")}};
}

void HostSession::write(const std::string& name, const std::string& text) {
    const fs::path path = mFolder.path("home/" + name);
    fs::create_directories(path.parent_path());
    std::ofstream(path) << text;
}

std::vector<std::string> HostSession::jailed(const std::vector<std::string>& command) const {
    const std::string own = mFolder.path();
    std::vector<std::string> all{"/usr/bin/bwrap", "--dev-bind", "/", "/"};
    const auto bind = [&all](const std::string& from, const std::string& to) {
        all.insert(all.end(), {"--bind", from, to});
    };
    bind(mFolder.path("temporary"), "/tmp");
    for (const std::string& kept : {own, std::string(kSockets), std::string(SOURCE_FOLDER), programsFolder()})
        bind(kept, kept);
    bind(kEngines, mFolder.path("hidden"));
    bind(mFolder.path("engines"), kEngines);
    all.insert(all.end(), {"--proc", "/proc", "--unshare-user", "--unshare-pid", "--uid", "1000", "--gid",
                           "1000", "--die-with-parent", "--"});
    all.insert(all.end(), command.begin(), command.end());
    return all;
}

Child::Place HostSession::place() const {
    Child::Place place{mFolder.path("home"), {}, mFolder.path("log"), mFolder.path("log")};
    for (const auto& [name, value] : environment) place.environment.push_back(name + "=" + value);
    return place;
}

void HostSession::start(const std::vector<std::string>& host) {
    std::vector<std::string> command{"sh", "-c", kSession, "session"};
    command.insert(command.end(), host.begin(), host.end());
    mChild = startBeside(command);
}

int HostSession::run(const std::vector<std::string>& command) { return statusOf(*startBeside(command)); }

std::unique_ptr<Child> HostSession::startBeside(const std::vector<std::string>& command) {
    return std::make_unique<Child>(jailed(command), place());
}

std::vector<pid_t> HostSession::processes(const std::string& program) const {
    return descendantsRunning(mChild->id(), program);
}

void HostSession::kill(const std::string& program) const {
    for (const pid_t each : processes(program)) ::kill(each, SIGKILL);
}

std::vector<pid_t> HostSession::waitForSavers(std::size_t count) const {
    waitUntil([&] { return processes("tellmar").size() == count; });
    return processes("tellmar");
}

std::string HostSession::log() const { return contentsOf(mFolder.path("log")); }

std::vector<std::string> HostSession::remains() const {
    std::vector<std::string> found;
    std::error_code error;
    for (const auto& entry : fs::directory_iterator(mFolder.path("temporary"), error))
        if (entry.path().filename().string().starts_with("tellmar-")) found.push_back(entry.path());
    for (const auto& entry : fs::directory_iterator(mFolder.path("home/.cache/.flatpak"), error))
        found.push_back(entry.path());
    return found;
}

std::vector<std::string> argumentsOf(pid_t process) { return partsOf(process, "cmdline"); }

std::map<std::string, std::string> environmentOf(pid_t process) {
    std::map<std::string, std::string> found;
    for (const std::string& part : partsOf(process, "environ")) {
        const auto equals = part.find('=');
        found[part.substr(0, equals)] = part.substr(equals + 1);
    }
    return found;
}
