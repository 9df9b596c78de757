#!/usr/bin/python3
"""Takes the place of a desktop's service on the session bus, until it is ended.

usage: bus_service.py inhibitor    a session manager, or power management, that is asked to keep the session awake
       bus_service.py locker       a locker that has locked the session
"""
import signal
import sys

from gi.repository import Gio, GLib

BOOLEAN_METHOD = """
<method name="{}"><arg type="u" direction="in"/><arg type="b" direction="out"/></method>
"""
SERVICES = {
    "org.gnome.SessionManager": BOOLEAN_METHOD.format("IsInhibited")
    + '<property name="InhibitedActions" type="u" access="read"/>',
    "org.kde.Solid.PowerManagement.PolicyAgent": BOOLEAN_METHOD.format("HasInhibition"),
}
IDLE = GLib.Variant("u", 8)

bus = Gio.bus_get_sync(Gio.BusType.SESSION)
loop = GLib.MainLoop()


def change(is_active):
    value = GLib.Variant("(b)", (is_active,))
    bus.emit_signal(None, "/ScreenSaver", "org.freedesktop.ScreenSaver", "ActiveChanged", value)


def unlock():
    change(False)
    loop.quit()


if sys.argv[1] == "locker":
    change(True)
    GLib.unix_signal_add(GLib.PRIORITY_DEFAULT, signal.SIGTERM, unlock)
else:
    for name, members in SERVICES.items():
        node = Gio.DBusNodeInfo.new_for_xml(f'<node><interface name="{name}">{members}</interface></node>')
        bus.register_object(
            "/" + name.replace(".", "/"),
            node.interfaces[0],
            lambda *call: call[-1].return_value(GLib.Variant("(b)", (True,))),
            lambda *_: IDLE,
            None,
        )
        Gio.bus_own_name_on_connection(bus, name, 0, None, None)
print(sys.argv[1], "is there", flush=True)
loop.run()
bus.flush_sync()
