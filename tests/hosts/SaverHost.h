#pragma once

#include <ostream>
#include <string>
#include <vector>

#include "tests/hosts/HostSession.h"

// What sets one screen-saver host apart from another.
struct HostKind {
    std::string label;     // in the names of tests
    std::string daemon;    // NAME; it is commanded by NAME-command
    std::string option;    // that the daemon is started with
    std::string settings;  // the program that lists savers and previews one
    // Writes settings in which Tellmar, with these options, is the one saver.
    void (*choose)(HostSession& session, const std::string& options);
};

const HostKind& xScreenSaver();
const HostKind& mateScreensaver();

// Names a test's parameter.
inline void PrintTo(const HostKind& kind, std::ostream* stream) { *stream << kind.label; }

// A session with one of them in it.
class SaverHost : public HostSession {
  public:
    static std::string obstacle(const HostKind& kind);

    SaverHost(const HostKind& kind, const TestDisplay& display) : HostSession(display), mKind(kind) {}

    void start(const std::string& saverOptions);
    // Starts it and has it show the saver. Returns the saver's process, 0 when none comes.
    pid_t show(const std::string& saverOptions);
    // "activate", "deactivate" or "lock". Waits for a daemon that has just been started.
    bool command(const std::string& what);
    // Starts the settings program.
    std::unique_ptr<Child> openSettings();
    // Ends the daemon as a crash would.
    void crash() const;

  private:
    const HostKind& mKind;
};

// The process and all that it has started, directly or not.
std::vector<pid_t> familyOf(pid_t process);
