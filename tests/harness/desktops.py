"""Desktops without a screen-saver host, each with two monitors of 1280 x 720 side by side."""
import time

from harness.display import Display, MonitorDisplay
from harness.processes import wait_until
from harness.program import PROGRAM, ROOT
from harness.session import BUS, Compositor, Session
from harness.sights import is_map, shows

MONITORS = [(0, 0, 1280, 720), (1280, 0, 1280, 720)]
IDLE_SECONDS = 1.2
TYPING_WINDOW = ROOT / "tests/harness/typing_window.py"


class Desktop(Session):
    """A session in which the waiter runs."""

    REQUIRED = [*Session.REQUIRED, "/usr/lib/python3/dist-packages/gi"]

    def __init__(self, display):
        super().__init__(display)
        (self.path / "temporary/.X11-unix").mkdir()
        (self.path / "temporary/.X11-unix").chmod(0o1777)
        display.move_pointer(640, 600)  # keys go to the monitor under the pointer
        self.launch()

    def wait_when_idle(self):
        options = "--demo --speed 40 --no-cache"
        return self.start_and_stay(f"{PROGRAM}-idle {IDLE_SECONDS / 60} {options}")

    def open_window(self, *options):
        """Opens a window that reports what is typed into it."""
        window = self.start("/usr/bin/python3", TYPING_WINDOW, *options)
        wait_until(lambda: "shown" in self.log())
        return window

    def is_covered(self):
        return all(shows(self.display, is_map, monitor) for monitor in MONITORS)

    def stays_uncovered(self):
        """Whether no saver starts for longer than the idle time."""
        end = time.monotonic() + IDLE_SECONDS + 0.8
        while time.monotonic() < end and not self.savers():
            time.sleep(0.05)
        return not self.savers()


class GnomeShell(Compositor, Desktop):
    REQUIRED = [*Desktop.REQUIRED, "/usr/bin/gnome-shell"]

    def launch(self):
        self.environment |= {
            "XDG_CURRENT_DESKTOP": "GNOME",
            "DBUS_SYSTEM_BUS_ADDRESS": self.environment["DBUS_SESSION_BUS_ADDRESS"],
            "MUTTER_DEBUG_NUM_DUMMY_MONITORS": "2",
            "MUTTER_DEBUG_DUMMY_MODE_SPECS": "1280x720",
        }
        super().launch("wayland-0", "gnome-shell --nested --wayland")
        self.wait_for_success("gdbus", "wait", "--session", "--timeout=1", "org.gnome.Mutter.IdleMonitor")


class KWin(Compositor, Desktop):
    REQUIRED = [*Desktop.REQUIRED, "/usr/bin/kwin_wayland"]

    def launch(self):
        display = self.environment["DISPLAY"]
        self.environment |= {"KWIN_COMPOSE": "Q", "QT_LOGGING_RULES": "*=false"}
        size = "--width 1280 --height 720 --output-count 2"
        super().launch("wayland-0", f"kwin_wayland --x11-display {display} {size}")
        wait_until(self._monitors_are_shown)
        self._windows()[1].configure(x=1280)

    def _windows(self):
        return self.display.root.query_tree().children

    def _monitors_are_shown(self):
        return len(self._windows()) == 2 and all(w.get_attributes().map_state for w in self._windows())


class Openbox(Desktop):
    REQUIRED = [*Desktop.REQUIRED, *MonitorDisplay.REQUIRED, "/usr/bin/openbox"]

    def launch(self):
        self.start_and_stay(f"{BUS}; openbox")
