"""X displays to run programs on."""
import contextlib
import os
import subprocess

from PIL import Image, ImageGrab
from Xlib import X, XK
from Xlib.display import Display as Connection
from Xlib.error import XError
from Xlib.ext import randr, xtest
from Xlib.protocol.event import ClientMessage

from harness.processes import ENDING_WITH_US

PINK = 0xFFFF00FF  # what a host leaves in the window that it gives


class Display:
    """An X server of its own with one screen and no window manager, and a client of it."""

    def __init__(self, width=1280, height=720, server=("Xvfb",)):
        options = [] if "Xorg" in server[0] else ["-screen", "0", f"{width}x{height}x24"]
        self.name = self._start_server([*server, *options, "-nolisten", "tcp", "-noreset"])
        self.connection = Connection(self.name)
        self.connection.set_error_handler(lambda *_: None)  # a window may end between two requests
        self.connection.xfixes_query_version()
        self.root = self.connection.screen().root
        # As a window manager does; clients do without what has no name yet.
        for name in "WM_PROTOCOLS", "WM_DELETE_WINDOW", "_NET_WM_NAME", "UTF8_STRING":
            self.connection.intern_atom(name)

    def _start_server(self, command):
        read, write = os.pipe()
        self.server = subprocess.Popen(
            [*ENDING_WITH_US, *command, "-displayfd", str(write)], pass_fds=[write], stderr=subprocess.DEVNULL
        )
        os.close(write)
        with open(read) as number:
            return ":" + number.readline().strip()

    def close(self):
        self.connection.close()
        self.server.terminate()
        self.server.wait()

    def picture(self):
        """What the whole screen shows, as a PIL image."""
        return ImageGrab.grab(xdisplay=self.name)

    def pixel(self, x, y):
        """The red, green and blue of one, faster than a picture."""
        blue, green, red, _ = self.root.get_image(x, y, 1, 1, X.ZPixmap, 0xFFFFFFFF).data
        return red, green, blue

    def cursor_is_visible(self):
        return any(pixel >> 24 for pixel in self.connection.xfixes_get_cursor_image(self.root).cursor_image)

    def create_window(self, width, height, depth=24):
        """A window at the upper left corner, as a screen-saver host gives it; filled with pink."""
        visual = self._visual(depth)
        window = self.root.create_window(
            *(0, 0, width, height, 0, depth, X.InputOutput, visual),
            background_pixel=PINK,
            border_pixel=0,
            override_redirect=True,
            colormap=self.root.create_colormap(visual, X.AllocNone),
        )
        window.map()
        self.connection.sync()
        return window

    def _visual(self, depth):
        allowed = next(each for each in self.connection.screen().allowed_depths if each.depth == depth)
        return next(each.visual_id for each in allowed.visuals if each.visual_class == X.TrueColor)

    def window(self, number):
        return self.connection.create_resource_object("window", number)

    def window_with_title(self, title):
        """The uppermost visible window whose title begins so, None when there is none."""
        windows = reversed(self.root.query_tree().children)
        return next((each for each in windows if self._title(each).startswith(title)), None)

    def _title(self, window):
        with contextlib.suppress(XError):
            if window.get_attributes().map_state == X.IsViewable:
                return window.get_full_text_property(self.connection.intern_atom("_NET_WM_NAME")) or ""
        return ""

    def area_of(self, window):
        """Left, top, width and height on the screen."""
        size = window.get_geometry()
        place = self.root.translate_coords(window, 0, 0)
        return place.x, place.y, size.width, size.height

    def resize(self, window, width, height):
        window.configure(width=width, height=height)
        self.connection.sync()

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
        self._fake((X.KeyPress, code), (X.KeyRelease, code))

    def click(self):
        self._fake((X.ButtonPress, 1), (X.ButtonRelease, 1))

    def move_pointer(self, x, y):
        xtest.fake_input(self.connection, X.MotionNotify, x=x, y=y)
        self.connection.sync()

    def _fake(self, *events):
        for kind, detail in events:
            xtest.fake_input(self.connection, kind, detail)
        self.connection.sync()


class MonitorDisplay(Display):
    """An Xorg without hardware whose monitors come, go and change. It starts with one of 1280 x 720."""

    SERVER = "/usr/lib/xorg/Xorg"
    DRIVER = "/usr/lib/xorg/modules/drivers/dummy_drv.so"

    @classmethod
    def obstacle(cls):
        """What is not installed here, empty when nothing is missing."""
        return next((f"{file} is not installed" for file in (cls.SERVER, cls.DRIVER) if not os.path.exists(file)), "")

    def __init__(self, configuration):
        options = ["-config", configuration, "-logfile", "/dev/null", "-novtswitch", "-sharevts"]
        super().__init__(server=[self.SERVER, *options])
        millimetres = [round(pixels * 25.4 / 96) for pixels in (2560, 1024)]
        self.root.xrandr_set_screen_size(2560, 1024, *millimetres)  # as large as the configuration allows
        self.set_monitor(0, 0, "1280x720")

    def picture(self):
        """The faster way of other displays takes the size that this one had at its start."""
        size = self.root.get_geometry()
        pixels = self.root.get_image(0, 0, size.width, size.height, X.ZPixmap, 0xFFFFFFFF).data
        return Image.frombytes("RGB", (size.width, size.height), pixels, "raw", "BGRX")

    def set_monitor(self, number, left, mode_name):
        """Monitors are counted from 0."""
        resources = self._resources()
        output = resources.outputs[number]
        mode = self._mode(resources, mode_name)
        self.connection.xrandr_add_output_mode(output, mode)
        self._configure(resources, number, left, mode, [output])
        self._resources()  # lets the server see that something is connected now

    def remove_monitor(self, number):
        self._configure(self._resources(), number, 0, 0, [])

    def _configure(self, resources, number, left, mode, outputs):
        self.connection.xrandr_set_crtc_config(
            resources.crtcs[number], resources.config_timestamp, left, 0, mode, randr.Rotate_0, outputs
        )
        self.connection.sync()

    def _resources(self):
        return self.root.xrandr_get_screen_resources()

    @staticmethod
    def _mode(resources, wanted):
        names = resources.mode_names
        for mode in resources.modes:
            name, names = names[: mode.name_length], names[mode.name_length :]
            if name == wanted:
                return mode.id
        raise LookupError(wanted)
