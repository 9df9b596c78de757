"""Real screen-saver hosts and compositors, each in a session of its own."""
import functools
import os
import pathlib
import subprocess
import tempfile

import psutil

from harness.processes import descendants, end_at_once
from harness.program import PROGRAM, ROOT
from harness.sights import is_map, shows, wait_to_see
from harness.waiting import PATIENCE, wait_until

ENGINES = pathlib.Path("/usr/libexec/xscreensaver")
# The session outlives its host, so that a test sees what becomes of orphans.
SESSION = 'dbus-daemon --session --fork --nosyslog --address="$DBUS_SESSION_BUS_ADDRESS"; "$@"; exec sleep 600'


@functools.cache
def bwrap_works():
    command = ["bwrap", "--dev-bind", "/", "/", "--unshare-user", "--unshare-pid", "true"]
    return subprocess.run(command, stderr=subprocess.DEVNULL).returncode == 0


class Session:
    """A user's session: home, temporary files, message bus and processes of its own, and the program alone in the folder
    where hosts look for savers. Hosts refuse to work for root, so the user is another one. The environment may be
    changed before a command."""

    PROGRAMS = []  # that must be installed, beside those of every session

    @classmethod
    def obstacle(cls):
        """What is missing here, empty when nothing is."""
        for name in [*cls.PROGRAMS, "dbus-daemon", "bwrap"]:
            if not os.path.exists(f"/usr/bin/{name}"):
                return f"{name} is not installed"
        if not ENGINES.is_dir():
            return f"{ENGINES} does not exist"
        return "" if bwrap_works() else "bwrap cannot make a session of its own here"

    def __init__(self, display):
        self._folder = tempfile.TemporaryDirectory()
        self.path = pathlib.Path(self._folder.name)
        for name in "home", "engines", "hidden", "temporary":
            (self.path / name).mkdir()
        self._fill_engines()
        self._started = []
        self.display = display
        self.environment = {
            "DISPLAY": display.name,
            "HOME": str(self.path / "home"),
            "PATH": "/usr/bin:/bin",
            "LANG": "C.UTF-8",
            "GSETTINGS_BACKEND": "keyfile",
            "XDG_RUNTIME_DIR": "/tmp",
            "DBUS_SESSION_BUS_ADDRESS": f"unix:path={self.path}/bus",
        }

    def _fill_engines(self):
        """The host keeps programs of its own in that folder too."""
        (self.path / "engines/tellmar").symlink_to(PROGRAM)
        for each in ENGINES.glob("xscreensaver*"):
            (self.path / "engines" / each.name).symlink_to(self.path / "hidden" / each.name)

    def close(self):
        for each in self._started:
            end_at_once([each])
            each.wait()
        print(self.log())  # for the report of a test that fails
        self._folder.cleanup()

    def write(self, name, text):
        """Writes a file in the user's home."""
        file = self.path / "home" / name
        file.parent.mkdir(parents=True, exist_ok=True)
        file.write_text(text)

    def start_host(self, *command):
        self.host = self.start("sh", "-c", SESSION, "session", *command)

    def start_and_stay(self, command):
        """Starts a shell command, of which a test can see the orphans."""
        return self.start("sh", "-c", f"{command}; exec sleep 600")

    def start(self, *command):
        """Starts a command in the session. Returns the process that everything it starts descends from."""
        with open(self.path / "log", "ab") as log:
            jailed = psutil.Popen(
                [*self._jail(), *command],
                cwd=self.path / "home",
                env=self.environment,
                stdin=subprocess.DEVNULL,
                stdout=log,
                stderr=log,
            )
        self._started.append(jailed)
        return jailed

    def _jail(self):
        binds = [(self.path / "temporary", "/tmp")]
        binds += [(kept, kept) for kept in (self.path, "/tmp/.X11-unix", ROOT, PROGRAM.parent)]
        binds += [(ENGINES, self.path / "hidden"), (self.path / "engines", ENGINES)]
        jail = ["bwrap", "--dev-bind", "/", "/"]
        for source, target in binds:
            jail += ["--bind", str(source), str(target)]
        user = ["--unshare-user", "--uid", "1000", "--gid", "1000"]
        return [*jail, *user, "--proc", "/proc", "--unshare-pid", "--die-with-parent", "--"]

    def succeeds(self, *command):
        return self.start(*command).wait(PATIENCE) == 0

    def log(self):
        """What everything in the session wrote."""
        file = self.path / "log"
        return file.read_text(errors="replace") if file.exists() else ""

    def savers(self):
        return [saver for each in self._started if each.poll() is None for saver in descendants(each, "tellmar")]

    def wait_for_savers(self, count):
        """Waits until so many run. Returns them, those who started others first."""
        wait_until(lambda: len(self.savers()) == count)
        return self.savers()

    def remains(self):
        """What savers keep among temporary files."""
        return [*self.path.glob("temporary/tellmar-*"), *self.path.glob("home/.cache/.flatpak/*")]


class SaverHost(Session):
    """A screen-saver daemon, which NAME-command commands."""

    NAME = OPTION = SETTINGS = ""

    @classmethod
    def obstacle(cls):
        cls.PROGRAMS = [cls.NAME, f"{cls.NAME}-command", cls.SETTINGS]
        return super().obstacle()

    def choose(self, options):
        """Writes settings in which Tellmar with these options is the one saver."""
        raise NotImplementedError

    def launch(self, options):
        self.choose(options)
        self.start_host(self.NAME, self.OPTION)

    def show(self, options):
        """Starts the daemon and has it show the saver. Returns the saver's process."""
        self.launch(options)
        self.command("activate")
        return self.wait_for_savers(1)[0]

    def command(self, name):
        """Such as "activate", "deactivate" or "lock". Waits for a daemon that has just been started."""
        wait_until(lambda: self.succeeds(f"{self.NAME}-command", f"--{name}"))

    def open_settings(self):
        return self.start_and_stay(self.SETTINGS)

    def crash(self):
        for name in self.NAME, f"{self.NAME}-gfx":  # XScreenSaver's part that owns the windows
            end_at_once(descendants(self.host, name))


class XScreenSaver(SaverHost):
    NAME = "xscreensaver"
    OPTION = "--no-splash"
    SETTINGS = "xscreensaver-settings"

    def choose(self, options):
        settings = "timeout: 9:00:00\nlock: False\nsplash: False\nfade: False\nunfade: False\ndpmsEnabled: False\n"
        saver = f"mode: one\nselected: 0\nverbose: True\nprograms: tellmar {options}\\n\n"
        self.write(".xscreensaver", settings + saver)


class MateScreensaver(SaverHost):
    NAME = "mate-screensaver"
    OPTION = "--debug"
    SETTINGS = "mate-screensaver-preferences"

    def choose(self, options):
        entry = "[Desktop Entry]\nType=Application\nName=Tellmar\nTryExec=tellmar\nCategories=Screensaver;\n"
        self.write(".local/share/applications/screensavers/tellmar.desktop", f"{entry}Exec=tellmar {options}\n")
        self.write(
            ".config/glib-2.0/settings/keyfile",
            "[org/mate/screensaver]\nmode='single'\nthemes=['screensavers-tellmar']\n"
            "lock-enabled=false\nidle-activation-enabled=false\n",
        )


class Compositor(Session):
    """One whose monitors are windows on an X display, which shows their pictures and gives them input."""

    def launch(self, socket, *command):
        self.environment |= {"WLR_BACKENDS": "x11", "WLR_RENDERER": "pixman"}
        self.start_host(*command)
        wait_until((self.path / "temporary" / socket).exists)
        del self.environment["DISPLAY"]
        self.environment["WAYLAND_DISPLAY"] = socket

    def show(self, count):
        """Starts the program, which is to run in so many processes."""
        self.start_and_stay(f"{PROGRAM} --fullscreen --demo --verbose --speed 40")
        self.wait_for_savers(count)
        wait_to_see(is_map, self.display)

    def expect_nothing_left(self):
        self.wait_for_savers(0)
        wait_until(lambda: not self.remains())
        wait_until(lambda: not shows(self.display, is_map))


class Sway(Compositor):
    PROGRAMS = ["sway", "swaymsg", "swayidle", "pkill"]

    def launch(self, *lines):
        self.write("sway.conf", "\n".join(["xwayland disable", "output * bg #ff00ff solid_color", *lines, ""]))
        super().launch("wayland-1", "sway", "-c", "sway.conf")

    def add_monitor(self):
        wait_until(lambda: self.succeeds("sh", "-c", "swaymsg -s /tmp/sway-ipc* create_output"))

    def remove_monitor(self, number):
        """Monitors are counted from 1 in the order of their coming."""
        self.display.ask_to_close(self.display.window_with_title(f"wlroots - X11-{number}"))


class Cage(Compositor):
    PROGRAMS = ["cage", "Xwayland"]

    def launch(self):
        super().launch("wayland-0", "cage", "--", "sleep", "600")
