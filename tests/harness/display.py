"""X displays to run programs on."""
import contextlib
import os
import subprocess

from PIL import Image
from Xlib import X, XK
from Xlib.display import Display as Connection
from Xlib.error import ConnectionClosedError, XError
from Xlib.ext import xtest
from Xlib.protocol.event import ClientMessage

from harness.processes import ENDING_WITH_US

PINK = 0xFFFF00FF  # what a host leaves in the window that it gives


class Display:
    """An X server of its own with one screen and no window manager, and a client of it."""

    def __init__(self, width=1280, height=720):
        self._open("Xvfb", "-screen", "0", f"{width}x{height}x24")

    def _open(self, *server):
        read, write = os.pipe()
        command = [*ENDING_WITH_US, *server, "-displayfd", str(write), "-nolisten", "tcp", "-noreset"]
        self.server = subprocess.Popen(command, pass_fds=[write], stderr=subprocess.DEVNULL)
        os.close(write)
        with open(read) as number:
            self.name = ":" + number.readline().strip()
        if self.name == ":":
            raise SystemExit(f"{server[0]} does not start.")
        self.connection = Connection(self.name)
        self.connection.set_error_handler(lambda *_: None)  # a window may end between two requests
        self.connection.xfixes_query_version()
        self.root = self.connection.screen().root
        # As a window manager does; clients do without what has no name yet.
        for name in "WM_PROTOCOLS", "WM_DELETE_WINDOW", "_NET_WM_NAME", "UTF8_STRING":
            self.connection.intern_atom(name)

    def close(self):
        with contextlib.suppress(ConnectionClosedError):  # a test may have killed the server
            self.connection.close()
        self.server.terminate()
        self.server.wait()

    def picture(self, area=None):
        """What an area of the screen shows: left, top, width and height; the whole one where none is given."""
        left, top, width, height = area or self.area_of(self.root)
        pixels = self.root.get_image(left, top, width, height, X.ZPixmap, 0xFFFFFFFF).data
        return Image.frombytes("RGB", (width, height), pixels, "raw", "BGRX")

    def area_of(self, window):
        size, place = window.get_geometry(), self.root.translate_coords(window, 0, 0)
        return place.x, place.y, size.width, size.height

    def cursor_is_visible(self):
        return any(pixel >> 24 for pixel in self.connection.xfixes_get_cursor_image(self.root).cursor_image)

    def create_window(self, width, height, parent=None):
        """A window at the upper left corner, as a screen-saver host gives it; filled with pink."""
        look = {"background_pixel": PINK, "override_redirect": True}
        window = (parent or self.root).create_window(0, 0, width, height, 0, X.CopyFromParent, **look)
        window.map()
        self.connection.sync()
        return window

    def window_with_title(self, title):
        """The uppermost visible window whose title begins so, None when there is none."""
        name = self.connection.intern_atom("_NET_WM_NAME")
        for window in reversed(self.root.query_tree().children):
            with contextlib.suppress(XError):
                text = window.get_full_text_property(name) or ""
                if text.startswith(title) and window.get_attributes().map_state == X.IsViewable:
                    return window
        return None

    def destroy(self, window):
        window.destroy()
        self.connection.sync()

    def focus(self, window):
        window.set_input_focus(X.RevertToParent, X.CurrentTime)
        self.connection.sync()

    def ask_to_close(self, window):
        """As the window's close button does."""
        atom = self.connection.intern_atom
        data = (32, [atom("WM_DELETE_WINDOW"), 0, 0, 0, 0])
        window.send_event(ClientMessage(window=window, client_type=atom("WM_PROTOCOLS"), data=data))
        self.connection.sync()

    def press(self, key):
        """Presses and releases a key by its X name."""
        code = self.connection.keysym_to_keycode(XK.string_to_keysym(key))
        self._fake(X.KeyPress, code)
        self._fake(X.KeyRelease, code)

    def click(self):
        self._fake(X.ButtonPress, 1)
        self._fake(X.ButtonRelease, 1)

    def move_pointer(self, x, y):
        self._fake(X.MotionNotify, x=x, y=y)

    def _fake(self, kind, detail=0, **place):
        xtest.fake_input(self.connection, kind, detail, **place)
        self.connection.sync()


class MonitorDisplay(Display):
    """A display whose monitors come, go and change: an Xorg without hardware. It starts with one of 1280 x 720."""

    REQUIRED = ["/usr/lib/xorg/Xorg", "/usr/lib/xorg/modules/drivers/dummy_drv.so", "/usr/bin/xrandr"]

    def __init__(self):
        configuration = os.path.join(os.path.dirname(os.path.abspath(__file__)), "xorg-dummy.conf")
        self._open(self.REQUIRED[0], "-config", configuration, "-logfile", "/dev/null", "-novtswitch", "-sharevts")
        self.set_monitor(0, 0, "1280x720")

    def set_monitor(self, number, left, mode):
        """Monitors are counted from 0."""
        self._configure("--addmode", f"DUMMY{number}", mode)
        self._configure("--output", f"DUMMY{number}", "--mode", mode, "--pos", f"{left}x0")
        self._configure("--query")  # only now does the driver report the output as connected

    def remove_monitor(self, number):
        self._configure("--output", f"DUMMY{number}", "--off")

    def _configure(self, *options):
        screen = ["--fb", "2560x1024"] if "--output" in options else []  # as large as the configuration allows
        subprocess.run(["xrandr", "--display", self.name, *screen, *options], check=True, stdout=subprocess.DEVNULL)
