#pragma once

#include <sys/types.h>

#include <map>
#include <memory>
#include <string>
#include <vector>

#include "tests/TemporaryFolder.h"
#include "tests/program/Child.h"
#include "tests/program/TestDisplay.h"

// A user's session around a real screen-saver host: home, temporary files, message bus and processes of its
// own, and the program alone in the folder where hosts look for savers. Hosts refuse to work for root, so the
// user is another one.
class HostSession {
  public:
    // What is missing here, of programs and otherwise; empty when nothing is.
    static std::string obstacle(const std::vector<std::string>& programs);

    explicit HostSession(const TestDisplay& display);

    // What the session begins with; a test may add to it before.
    std::map<std::string, std::string> environment;

    // Writes a file in the user's home.
    void write(const std::string& name, const std::string& text);

    void start(const std::vector<std::string>& host);
    // Runs a command beside the host to its end. Returns its status.
    int run(const std::vector<std::string>& command);
    // Starts a command beside the host.
    std::unique_ptr<Child> startBeside(const std::vector<std::string>& command);

    // The processes of the session that run this program.
    std::vector<pid_t> processes(const std::string& program) const;
    // Ends them as a crash would.
    void kill(const std::string& program) const;
    // Waits until the host runs so many savers. Returns them.
    std::vector<pid_t> waitForSavers(std::size_t count) const;

    // What the host and its savers wrote.
    std::string log() const;
    // What savers left behind among temporary files.
    std::vector<std::string> remains() const;

  private:
    std::vector<std::string> jailed(const std::vector<std::string>& command) const;
    Child::Place place() const;

    TemporaryFolder mFolder;
    std::unique_ptr<Child> mChild;
};

// Of a process that runs.
std::vector<std::string> argumentsOf(pid_t process);
std::map<std::string, std::string> environmentOf(pid_t process);
