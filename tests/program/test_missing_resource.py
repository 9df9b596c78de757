"""What the program does without a part of its bundle, a folder to write in, or a message bus."""
import signal

import pytest

from harness.program import copy_program
from harness.sights import is_map, wait_for_report, wait_to_see


@pytest.mark.parametrize("end", ["of itself", "by a signal"])
def test_without_its_template_it_reports_that_in_the_hosts_window_and_ends(display, program, end):
    program.executable = copy_program(program.path, lacking="map.html")
    program.environment["XSCREENSAVER_WINDOW"] = hex(display.create_window(1280, 720).id)
    program.start("--demo")
    wait_for_report(display)
    assert program.count("Failed to read map.html") == 1
    assert "map.html" in (program.path / "error.log").read_text()
    assert program.is_running()
    if end == "by a signal":
        program.process.send_signal(signal.SIGTERM)
    assert program.status() == 0
    assert not program.remains()


def test_in_a_window_of_its_own_the_report_waits_for_the_user(display, program):
    program.executable = copy_program(program.path, lacking="map.html")
    program.start("--demo")
    wait_for_report(display)
    display.focus(display.window_with_title("Tellmar"))
    assert program.is_running()
    display.press("Return")
    assert program.status() == 0


@pytest.mark.parametrize("names", [["XDG_RUNTIME_DIR"], ["HOME", "XDG_CONFIG_HOME", "XDG_CACHE_HOME", "TMPDIR"]])
def test_folders_that_cannot_be_created_keep_no_map_away(display, program, names):
    (program.path / "file").touch()
    for name in names:
        program.environment[name] = f"{program.path}/file/folder"
    program.start("--demo", "--verbose", "--speed", "50")
    program.wait_for("fade: ", 2)
    wait_to_see(is_map, display)


@pytest.mark.parametrize("bus", ["AT_SPI_BUS_ADDRESS", "DBUS_SESSION_BUS_ADDRESS"])
def test_a_message_bus_that_is_gone_keeps_no_page_away(program, bus):
    program.environment[bus] = f"unix:path={program.path}/gone/bus,guid=0"
    program.start("--demo", "--verbose")
    program.wait_for("page: loaded", 2)
