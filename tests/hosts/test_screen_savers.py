"""The program in the screen-saver hosts of X."""
import pytest

from harness.display import Display, MonitorDisplay
from harness.processes import descendants, kill, wait_for_end, wait_until
from harness.session import MateScreensaver, XScreenSaver
from harness.sights import is_map, shows_preview, wait_to_see

SCREEN = (0, 0, 1280, 720)

in_each_host = pytest.mark.parametrize("kind", [XScreenSaver, MateScreensaver])


@in_each_host
def test_the_saver_fills_the_screen_until_the_host_ends_it(make, display, kind):
    host = make(kind, display)
    saver = host.show("--root --demo --verbose --speed 20")
    wait_to_see(is_map, display)
    assert saver.nice() >= 10  # more where the tests themselves run so
    helpers = descendants(saver)
    assert helpers and host.remains()
    host.command("deactivate")
    host.wait_for_end()
    wait_for_end(helpers)
    assert "crashed" not in host.log()
    host.command("activate")
    host.wait_for_savers(1)


@in_each_host
def test_the_saver_ends_when_the_host_is_killed(make, display, kind):
    host = make(kind, display)
    saver = host.show("--root --demo")
    wait_until(host.remains)
    helpers = descendants(saver)
    host.crash()
    host.wait_for_end()
    wait_for_end(helpers)


@in_each_host
def test_the_saver_stays_when_the_resolution_changes(make, kind):
    monitors = make(MonitorDisplay)
    host = make(kind, monitors)
    saver = host.show("--demo --speed 20")
    wait_to_see(is_map, monitors, SCREEN)
    monitors.set_monitor(0, 0, "1024x768")
    wait_to_see(is_map, monitors, (0, 0, 1024, 768))
    assert host.savers() == [saver]


@in_each_host
def test_the_preview_is_in_the_settings_until_they_are_gone(make, kind):
    display = make(Display, 1280, 800)  # XScreenSaver's preview is more than half as wide
    host = make(kind, display)
    host.launch("--demo --verbose")
    settings = host.start_and_stay(kind.SETTINGS)
    saver = host.wait_for_savers(1)[0]
    window = display.connection.create_resource_object("window", int(saver.environ()["XSCREENSAVER_WINDOW"], 16))
    wait_until(lambda: shows_preview(display, display.area_of(window)), patience=20)  # before a first map
    kill(descendants(settings, kind.SETTINGS))
    host.wait_for_end()


def test_each_monitor_has_a_saver_while_monitors_come_and_go_under_xscreensaver(make):
    monitors = make(MonitorDisplay)
    host = make(XScreenSaver, monitors)
    first = host.show("--demo --speed 20")
    wait_to_see(is_map, monitors, SCREEN)
    monitors.set_monitor(1, 1280, "800x600")
    assert first in host.wait_for_savers(2)
    wait_to_see(is_map, monitors, (1280, 0, 800, 600))
    monitors.remove_monitor(1)
    assert host.wait_for_savers(1) == [first]
    wait_to_see(is_map, monitors, SCREEN)
