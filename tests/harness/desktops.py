"""Desktops without a screen-saver host, each with two monitors of 1280 x 720 side by side."""
import time

from harness.display import Display, MonitorDisplay
from harness.processes import descendants, kill, wait_until
from harness.program import PROGRAM, ROOT
from harness.session import BUS, Compositor, Session
from harness.sights import shows_map

MONITORS = [(0, 0, 1280, 720), (1280, 0, 1280, 720)]
IDLE_SECONDS = 0.8
CALL_SAVER = "gdbus call --session --dest org.freedesktop.ScreenSaver --object-path /ScreenSaver --method".split()
MONITORS_SERVICE = "org.gnome.Mutter.DisplayConfig"
CALL_MONITORS = f"gdbus call --session --dest {MONITORS_SERVICE} --object-path /{MONITORS_SERVICE.replace('.', '/')} --method {MONITORS_SERVICE}"
HARNESS = ROOT / "tests/harness"


def wide_display(make):
    return make(Display, 2560, 720)


def two_monitors(make):
    display = make(MonitorDisplay)
    display.set_monitor(1, 1280, "1280x720")
    return display


class Desktop(Session):
    """A session in which the waiter runs."""

    REQUIRED = [*Session.REQUIRED, "/usr/lib/python3/dist-packages/gi"]
    display_of = staticmethod(wide_display)

    def __init__(self, display):
        super().__init__(display)
        sockets = self.path / "temporary/.X11-unix"
        sockets.mkdir()
        sockets.chmod(0o1777)
        display.move_pointer(640, 600)  # nested compositors get the keys of the window under the pointer
        self.launch()
        display.move_pointer(640, 601)  # until it moves, GNOME Shell shows it in a corner, over everything

    def start_waiter(self):
        self._waiter = self.start_and_stay(f"{PROGRAM}-idle {IDLE_SECONDS / 60} --demo --speed 40 --no-cache")

    def crash(self):
        """Kills the program that shows all windows."""
        started = [each for root in self._started if root.is_running() for each in descendants(root)]
        kill([each for each in started if each.name().startswith(self.SHOWS_WINDOWS)])  # others end with the first

    def wait_for_saver(self):
        return self.wait_for_savers(1 + len(MONITORS))  # for a moment there is another, which becomes a helper of WebKit's

    def wait_until_covered(self):
        for monitor in MONITORS:
            wait_until(lambda area=monitor: shows_map(self.display, area))
        self.wait_for_saver()

    def stays(self, savers):
        """Whether no other saver than these starts for longer than the idle time."""
        end = time.monotonic() + IDLE_SECONDS + 1
        while time.monotonic() < end and self.savers() == savers:
            time.sleep(0.05)
        return self.savers() == savers

    def wait_for_end_of_all(self):
        """The waiter's included."""
        wait_until(lambda: not descendants(self._waiter, "tellmar-idle") and not self.savers())

    def wait_for_end(self):
        """Waits until nothing of the saver is left, and keeps the session in use meanwhile."""

        def has_ended():
            self.display.press("Shift_L")
            return not self.savers() and not self.remains()

        wait_until(has_ended)

    def open_window(self, *options):
        """Opens a user's window that reports what is typed into it."""
        return self._start_script("typing_window.py", "shown", *options)

    def type_until_seen(self, key):
        """Types into the user's window, which gets the focus some time after it was covered."""

        def is_seen():
            self.display.press(key)
            return f"typed {key}\n" in self.log()

        wait_until(is_seen)

    def lock(self):
        self._locker = self._start_script("bus_service.py", "locker is there", "locker")

    def unlock(self):
        for each in descendants(self._locker, "python3"):
            each.terminate()

    def play(self):
        """Starts what a player is to the desktop. Returns its process."""
        return self._start_script("bus_service.py", "inhibitor is there", "inhibitor")

    def _start_script(self, script, sign, *options):
        count = self.log().count(sign)
        started = self.start("/usr/bin/python3", str(HARNESS / script), *options)
        wait_until(lambda: self.log().count(sign) > count)
        return started


class GnomeShell(Compositor, Desktop):
    REQUIRED = [*Desktop.REQUIRED, "/usr/bin/gnome-shell"]
    SHOWS_WINDOWS = "gnome-shell"

    def launch(self):
        self.environment |= {
            "XDG_CURRENT_DESKTOP": "GNOME",
            "DBUS_SYSTEM_BUS_ADDRESS": self.environment["DBUS_SESSION_BUS_ADDRESS"],
            "MUTTER_DEBUG_NUM_DUMMY_MONITORS": "2",
            "MUTTER_DEBUG_DUMMY_MODE_SPECS": "1280x720:1600x720",
        }
        # Notices would come on top of the saver.
        self.write(".config/glib-2.0/settings/keyfile", "[org/gnome/desktop/notifications]\nshow-banners=false\n")
        super().launch("wayland-0", "gnome-shell --nested --wayland")
        self.wait_for_success("gdbus", "wait", "--session", "--timeout=1", "org.gnome.Mutter.IdleMonitor")

    def widen_second_monitor(self):
        """To 1600 x 720."""
        first = "(0, 0, 1.0, 0, true, [('LVDS1', '1280x720@60.000', {})])"
        second = "(1280, 0, 1.0, 0, false, [('LVDS2', '1600x720@60.000', {})])"
        serial = f"$({CALL_MONITORS}.GetCurrentState | sed -E 's/^.uint32 ([0-9]+).*/\\1/')"
        temporarily = 1
        arguments = f'{serial} {temporarily} "[{first}, {second}]" "{{}}"'
        self.wait_for_success("sh", "-c", f"{CALL_MONITORS}.ApplyMonitorsConfig {arguments}")


class KWin(Compositor, Desktop):
    """Its own locker locks. A script takes the place of the part that asks for the password, and unlocks when it is ended."""

    GREETER = "/usr/lib/x86_64-linux-gnu/libexec/kscreenlocker_greet"
    REQUIRED = [*Desktop.REQUIRED, "/usr/bin/kwin_wayland", GREETER]
    SHOWS_WINDOWS = "kwin_wayland"

    def launch(self):
        display = self.environment["DISPLAY"]
        quiet = {"KWIN_COMPOSE": "Q", "QT_LOGGING_RULES": "*=false"}
        self.environment |= {"XDG_CURRENT_DESKTOP": "KDE", **quiet}
        size = "--width 1280 --height 720 --output-count 2"
        super().launch("wayland-0", f"kwin_wayland --x11-display {display} {size}")
        wait_until(self._monitors_are_shown)
        self._windows()[1].configure(x=1280)

    def lock(self):
        self.wait_for_success(*CALL_SAVER, "org.freedesktop.ScreenSaver.Lock")

    def unlock(self):
        wait_until(self._greeters)[0].terminate()

    def _greeters(self):
        return [each for root in self._started if root.is_running() for each in descendants(root, "kscreenlocker_g")]

    def _jail(self):
        greeter = self.path / "kscreenlocker_greet"
        greeter.write_text("#!/bin/sh\ntrap 'exit 0' TERM\nwhile :; do sleep 0.05; done\n")
        greeter.chmod(0o755)
        return [*super()._jail()[:-1], "--ro-bind", str(greeter), self.GREETER, "--"]

    def _windows(self):
        return self.display.root.query_tree().children

    def _monitors_are_shown(self):
        return len(self._windows()) == 2 and all(each.get_attributes().map_state for each in self._windows())


class Openbox(Desktop):
    REQUIRED = [*Desktop.REQUIRED, *MonitorDisplay.REQUIRED, "/usr/bin/openbox", "/usr/bin/i3lock"]
    display_of = staticmethod(two_monitors)

    def launch(self):
        self.start_and_stay(f"{BUS}; openbox")

    def crash(self):
        self.display.server.kill()

    def lock(self):
        self._locker = self.start("i3lock", "--nofork", "--color=ff00ff")

    def unlock(self):
        kill([self._locker])

    def play(self):
        return self.open_window("--fullscreen")
