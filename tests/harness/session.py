"""Real screen-saver hosts and compositors, each in a session of its own."""
import pathlib
import subprocess
import tempfile

import psutil

from harness.processes import descendants, kill, wait_until
from harness.program import PROGRAM, ROOT
from harness.sights import is_map, shows, wait_to_see

ENGINES = pathlib.Path("/usr/libexec/xscreensaver")  # where hosts look for savers
BUS = 'dbus-daemon --session --fork --nosyslog --address="$DBUS_SESSION_BUS_ADDRESS"'


def bwrap_works():
    """Not every container lets its processes have namespaces of their own."""
    command = ["bwrap", "--dev-bind", "/", "/", "--proc", "/proc", "--unshare-user", "--unshare-pid", "true"]
    return subprocess.run(command, stderr=subprocess.DEVNULL).returncode == 0


class Session:
    """Home, temporary files, message bus and processes of its own, and the program alone in the hosts' folder. Hosts
    refuse to work for root, so the user is another one. The environment may be changed before a command."""

    REQUIRED = [ENGINES, "/usr/bin/dbus-daemon", "/usr/bin/bwrap"]

    def __init__(self, display):
        self._folder = tempfile.TemporaryDirectory()
        self.path = pathlib.Path(self._folder.name)
        for name in "home", "temporary":
            (self.path / name).mkdir()
        (self.path / "passwd").write_text("user:x:1000:1000::/:/bin/sh\n")  # a bare system has no such user
        self.display = display
        self._started = []
        self.environment = {
            "DISPLAY": display.name,
            "HOME": f"{self.path}/home",
            "PATH": "/usr/bin:/bin",
            "LANG": "C.UTF-8",
            "GSETTINGS_BACKEND": "keyfile",
            "XDG_RUNTIME_DIR": "/tmp",
            "DBUS_SESSION_BUS_ADDRESS": f"unix:path={self.path}/bus",
        }

    def close(self):
        kill(self._started)
        for each in self._started:
            each.wait()
        self._folder.cleanup()

    def write(self, name, text):
        """Writes a file in the user's home."""
        file = self.path / "home" / name
        file.parent.mkdir(parents=True, exist_ok=True)
        file.write_text(text)

    def start_and_stay(self, command):
        """Starts a shell command, of which a test can see the orphans."""
        return self.start("sh", "-c", f"{command}; exec sleep 600")

    def start(self, *command):
        """Starts a command. Returns the process that all of its own descend from."""
        with open(self.path / "log", "ab") as log:
            streams = {"stdin": subprocess.DEVNULL, "stdout": log, "stderr": log}
            jailed = [*self._jail(), *command]
            self._started.append(psutil.Popen(jailed, cwd=self.path / "home", env=self.environment, **streams))
        return self._started[-1]

    def _jail(self):
        jail = ["bwrap", "--dev-bind", "/", "/", "--bind", self.path / "temporary", "/tmp", "--tmpfs", ENGINES]
        # XScreenSaver keeps programs of its own there too.
        for kept in self.path, "/tmp/.X11-unix", ROOT, PROGRAM.parent, *ENGINES.glob("xscreensaver*"):
            jail += ["--bind", kept, kept]
        jail += ["--ro-bind", self.path / "passwd", "/etc/passwd", "--symlink", PROGRAM, ENGINES / "tellmar", "--proc", "/proc", "--die-with-parent"]
        return [*map(str, jail), "--unshare-pid", "--unshare-user", "--uid", "1000", "--gid", "1000", "--"]

    def wait_for_success(self, *command):
        """Tries the command until it succeeds, as it does once the host is ready."""
        wait_until(lambda: self.start(*command).wait() == 0)

    def log(self):
        """What everything in the session wrote."""
        return (self.path / "log").read_text(errors="replace")

    def savers(self):
        """The program's processes, each before those that it started."""
        return [saver for each in self._started if each.poll() is None for saver in descendants(each, "tellmar")]

    def wait_for_savers(self, count):
        wait_until(lambda: len(self.savers()) == count)
        return self.savers()

    def remains(self):
        """What savers keep among temporary files."""
        return [*self.path.glob("temporary/tellmar-*"), *self.path.glob("home/.cache/.flatpak/*")]

    def wait_for_end(self):
        """Waits until nothing of the program is left."""
        self.wait_for_savers(0)
        wait_until(lambda: not self.remains() and not shows(self.display, is_map))


class SaverHost(Session):
    """A screen-saver daemon. NAME-command commands it."""

    def launch(self, options):
        self.choose(options)
        self.host = self.start_and_stay(f"{BUS}; {self.NAME} {self.OPTION}")

    def show(self, options):
        """Starts the daemon and has it show the saver. Returns the saver's process."""
        self.launch(options)
        self.command("activate")
        return self.wait_for_savers(1)[0]

    def command(self, name):
        self.wait_for_success(f"{self.NAME}-command", f"--{name}")

    def crash(self):
        for name in self.NAME, f"{self.NAME}-gfx":  # XScreenSaver's part that owns the windows
            kill(descendants(self.host, name))


class XScreenSaver(SaverHost):
    NAME, OPTION, SETTINGS = "xscreensaver", "--no-splash", "xscreensaver-settings"
    REQUIRED = [*Session.REQUIRED, "/usr/bin/xscreensaver"]

    def choose(self, options):
        """Writes settings in which Tellmar is the one saver."""
        settings = "timeout: 9:00:00\nlock: False\nsplash: False\nfade: False\nunfade: False\ndpmsEnabled: False\n"
        saver = f"mode: one\nselected: 0\nverbose: True\nprograms: tellmar {options}\\n\n"
        self.write(".xscreensaver", settings + saver)


class MateScreensaver(SaverHost):
    NAME, OPTION, SETTINGS = "mate-screensaver", "--debug", "mate-screensaver-preferences"
    REQUIRED = [*Session.REQUIRED, "/usr/bin/mate-screensaver"]

    def choose(self, options):
        entry = "[Desktop Entry]\nType=Application\nName=Tellmar\nTryExec=tellmar\nCategories=Screensaver;\n"
        self.write(".local/share/applications/screensavers/tellmar.desktop", f"{entry}Exec=tellmar {options}\n")
        settings = "[org/mate/screensaver]\nmode='single'\nthemes=['screensavers-tellmar']\nlock-enabled=false\n"
        self.write(".config/glib-2.0/settings/keyfile", f"{settings}idle-activation-enabled=false\n")


class Compositor(Session):
    """One whose monitors are windows on an X display, which shows their pictures and gives them input."""

    def launch(self, socket, command):
        self.environment |= {"WLR_BACKENDS": "x11", "WLR_RENDERER": "pixman"}
        self.start_and_stay(f"{BUS}; {command}")
        wait_until((self.path / "temporary" / socket).exists)
        del self.environment["DISPLAY"]
        self.environment["WAYLAND_DISPLAY"] = socket

    def show(self, count):
        """Starts the program, which is to run in so many processes. Returns them."""
        self.start_and_stay(f"{PROGRAM} --fullscreen --demo --verbose --speed 40")
        self.wait_for_savers(count)
        wait_to_see(is_map, self.display)
        return self.savers()


class Sway(Compositor):
    REQUIRED = [*Session.REQUIRED, "/usr/bin/sway", "/usr/bin/swayidle", "/usr/bin/pkill"]

    def launch(self, *lines):
        self.write("sway.conf", "\n".join(["xwayland disable", "output * bg #ff00ff solid_color", *lines, ""]))
        super().launch("wayland-1", "sway -c sway.conf")

    def add_monitor(self):
        self.wait_for_success("sh", "-c", "swaymsg -s /tmp/sway-ipc* create_output")

    def remove_monitor(self, number):
        """Monitors are counted from 1 in the order of their coming."""
        self.display.ask_to_close(self.display.window_with_title(f"wlroots - X11-{number}"))


class Cage(Compositor):
    REQUIRED = [*Session.REQUIRED, "/usr/bin/cage", "/usr/bin/Xwayland"]

    def launch(self):
        super().launch("wayland-0", "cage -- sleep 600")
