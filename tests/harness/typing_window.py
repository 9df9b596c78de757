#!/usr/bin/python3
"""A window of a user's program, which prints each key that is typed into it. With --fullscreen it fills the screen."""
import sys

import gi

gi.require_version("Gdk", "3.0")
gi.require_version("Gtk", "3.0")
from gi.repository import Gdk, Gtk  # noqa: E402

window = Gtk.Window(title="below")
window.connect("key-press-event", lambda _, event: print("typed", Gdk.keyval_name(event.keyval), flush=True))
window.set_default_size(400, 300)
if "--fullscreen" in sys.argv:
    window.fullscreen()
window.show_all()
window.connect("map-event", lambda *_: print("shown", flush=True))
Gtk.main()
