#!/usr/bin/python3
"""Waits until a name appears in a window of the session, as a screen reader would find it. Fails after 20 seconds.

usage: dialog_names.py NAME
"""
import sys
import time

import gi

gi.require_version("Atspi", "2.0")
from gi.repository import Atspi, GLib  # noqa: E402 require_version comes first


def names(node):
    yield node.get_name()
    for index in range(node.get_child_count()):
        yield from names(node.get_child_at_index(index))


def names_on_screen():
    try:
        return list(names(Atspi.get_desktop(0)))
    except (AttributeError, GLib.Error):  # a window changed in the meantime
        return []


end = time.monotonic() + 20
while sys.argv[1] not in (found := names_on_screen()):
    if time.monotonic() > end:
        sys.exit("Found only: " + ", ".join(filter(None, found)))
    time.sleep(0.2)
