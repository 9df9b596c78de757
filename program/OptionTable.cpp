#include "program/OptionTable.h"

namespace {

constexpr char kWhere[] = "Where to run";
constexpr char kWhat[] = "What to show";
constexpr char kCommands[] = "Instead of running";
constexpr char kOther[] = "Other";

constexpr OptionEntry kTable[] = {
    {Option::Fullscreen, "fullscreen", nullptr, kWhere, "cover every monitor until the next input", nullptr},
    {Option::Kiosk, "kiosk", nullptr, kWhere, "the same until Escape or q; the screen stays on",
     "Cover every monitor until Escape or q is pressed, and keep the screen on.\n"
     "For lobbies and walls: see docs/KIOSK.md in the source."},
    {Option::WindowId, "window-id", "ID", kWhere,
     "run in the X11 window ID (decimal, or hexadecimal with 0x)",
     "Run in the X11 window ID (decimal, or hexadecimal with 0x).\nScreen-saver hosts pass this option."},
    {Option::Root, "root", nullptr, kWhere,
     "accepted for screen-saver hosts; XSCREENSAVER_WINDOW\nnames the window unless --window-id does",
     "Accepted because screen-saver hosts pass it.\n"
     "XSCREENSAVER_WINDOW names the window unless --window-id does."},
    {Option::Preview, "preview", nullptr, kWhere, "draw the small preview that a settings dialog shows",
     nullptr},

    {Option::Demo, "demo", nullptr, kWhat, "show the sample feed that comes with the program", nullptr},
    {Option::Feed, "feed", "FILE|URL", kWhat, "show this document instead of asking the service",
     "Show this QuakeML document (1.0 or 1.2) instead of asking the service."},
    {Option::Service, "service", "URL", kWhat, "ask this FDSN event service instead of GeoNet's",
     "Ask this FDSN event service instead of GeoNet's.\n"
     "URL is the http or https address of its query endpoint, or just its host.\n"
     "Parameters in the address override Tellmar's own."},
    {Option::NoCache, "no-cache", nullptr, kWhat, "neither cache the service's answers nor use cached ones",
     nullptr},
    {Option::Speed, "speed", "N", kWhat, "tick N times as often, for demonstrations",
     "Tick N times as often.\nN is above 0 and at most 1000; by default there is one tick every 15 seconds. "
     "Below 1, the first earthquake comes no later than usual."},

    {Option::List, "list", nullptr, kCommands, "print the earthquakes in the order they are shown",
     "Print the earthquakes in the order they are shown, with their times in UTC and in the machine's zone,\n"
     "or say why there are none."},
    {Option::Configure, "configure", nullptr, kCommands, "open the settings", nullptr},
    {Option::Register, "register", nullptr, kCommands, "add Tellmar to XScreenSaver's list (~/.xscreensaver)",
     "Add Tellmar to the savers listed in ~/.xscreensaver, XScreenSaver's settings, and report what was "
     "done.\n"
     "The rest of the file stays as it is, and a copy of the old file is kept beside it."},
    {Option::Unregister, "unregister", nullptr, kCommands, "remove it from that list",
     "Remove Tellmar from that list, with the same care."},
    {Option::Idle, "idle", "[MIN|off]", kCommands, "start Tellmar after MIN minutes without input",
     "Start Tellmar whenever there has been no input for MIN minutes, from now on and in each session, until "
     "\"off\" is "
     "given.\n"
     "Report how things stand when the value is left out.\n"
     "For desktops without a screen-saver host, such as GNOME and KDE."},
    {Option::Version, "version", nullptr, kCommands, "print the version", nullptr},
    {Option::Help, "help", nullptr, kCommands, "print this text", "Print the options."},

    {Option::Verbose, "verbose", nullptr, kOther, "log each fetch, tick, fade and page to stderr",
     "Log each fetch, tick, fade and page to standard error, one line each."},
};

}  // namespace

bool takesOptionalValue(const OptionEntry& entry) { return entry.valueName && entry.valueName[0] == '['; }

std::span<const OptionEntry> optionTable() { return kTable; }
