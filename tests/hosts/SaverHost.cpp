#include "tests/hosts/SaverHost.h"

#include "tests/program/ProcessTree.h"
#include "tests/program/Waiting.h"

namespace {

void chooseInXScreenSaver(HostSession& session, const std::string& options) {
    session.write(".xscreensaver",
                  "mode: one\nselected: 0\ntimeout: 9:00:00\nlock: False\nsplash: False\nfade: False\n"
                  "unfade: False\ndpmsEnabled: False\nverbose: True\nprograms: tellmar " +
                      options + "\\n\n");
}

void chooseInMateScreensaver(HostSession& session, const std::string& options) {
    session.write(".local/share/applications/screensavers/tellmar.desktop",
                  "[Desktop Entry]\nType=Application\nName=Tellmar\nTryExec=tellmar\n"
                  "Categories=Screensaver;\nExec=tellmar " +
                      options + "\n");
    session.write(".config/glib-2.0/settings/keyfile",
                  "[org/mate/screensaver]\nmode='single'\nthemes=['screensavers-tellmar']\n"
                  "lock-enabled=false\nidle-activation-enabled=false\n");
}

}  // namespace

const HostKind& xScreenSaver() {
    static const HostKind kind{"XScreenSaver", "xscreensaver", "--no-splash", "xscreensaver-settings",
                               chooseInXScreenSaver};
    return kind;
}

const HostKind& mateScreensaver() {
    static const HostKind kind{"MateScreensaver", "mate-screensaver", "--debug",
                               "mate-screensaver-preferences", chooseInMateScreensaver};
    return kind;
}

std::string SaverHost::obstacle(const HostKind& kind) {
    return HostSession::obstacle({kind.daemon, kind.daemon + "-command", kind.settings, "dbus-daemon"});
}

void SaverHost::start(const std::string& saverOptions) {
    mKind.choose(*this, saverOptions);
    HostSession::start({mKind.daemon, mKind.option});
}

pid_t SaverHost::show(const std::string& saverOptions) {
    start(saverOptions);
    if (!command("activate")) return 0;
    const auto savers = waitForSavers(1);
    return savers.size() == 1 ? savers[0] : 0;
}

bool SaverHost::command(const std::string& what) {
    return waitUntil([&] { return run({mKind.daemon + "-command", "--" + what}) == 0; });
}

std::unique_ptr<Child> SaverHost::openSettings() {
    return startBeside({"sh", "-c", mKind.settings + "; exec sleep 600"});
}

void SaverHost::crash() const {
    kill(mKind.daemon);
    kill(mKind.daemon + "-gfx");  // XScreenSaver's part that owns the windows
}

std::vector<pid_t> familyOf(pid_t process) {
    std::vector<pid_t> family = descendants(process);
    family.push_back(process);
    return family;
}
