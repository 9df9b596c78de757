"""The waiter on a plain X display, with and without a session bus. A script takes the saver's place."""
import shutil
import signal
import subprocess

import pytest

from harness.display import Display
from harness.processes import ENDING_WITH_US, descendants, wait_for_end, wait_until
from harness.program import PROGRAM, Program

SOON = "0.01"  # minutes


@pytest.fixture
def waiter(display, make, tmp_path):
    saver = tmp_path / "tellmar"
    saver.write_text("#!/bin/sh\nexec sleep 600\n")
    saver.chmod(0o755)
    program = make(Program, display, shutil.copy(f"{PROGRAM}-idle", tmp_path))
    program.environment["DBUS_SESSION_BUS_ADDRESS"] = f"unix:path={tmp_path}/bus"
    return program


@pytest.fixture
def bus(waiter, tmp_path):
    address = waiter.environment["DBUS_SESSION_BUS_ADDRESS"]
    command = [*ENDING_WITH_US, "dbus-daemon", "--session", "--nosyslog", f"--address={address}"]
    daemon = subprocess.Popen(command, stderr=subprocess.DEVNULL)
    wait_until((tmp_path / "bus").exists)
    yield daemon
    daemon.kill()
    daemon.wait()


def start(waiter):
    """Starts the waiter and waits for the saver. Returns the saver's process."""
    waiter.start(SOON)
    return wait_until(lambda: descendants(waiter.process, "sleep"))[0]


def test_it_is_replaced_by_the_next_one_of_its_session_and_ended_by_0_minutes(display, make, waiter, bus):
    saver = start(waiter)
    first = waiter.process
    next_saver = start(waiter)
    wait_for_end([first, saver])
    second = waiter.process
    waiter.environment["DISPLAY"] = make(Display).name
    start(waiter)  # in another session of the user, on the same bus
    waiter.end()
    assert second.poll() is None and descendants(second, "sleep") == [next_saver]
    waiter.environment["DISPLAY"] = display.name
    assert waiter.run("0") == 0
    wait_for_end([second, next_saver])


@pytest.mark.parametrize("number", [signal.SIGTERM, signal.SIGKILL])
def test_the_saver_ends_with_the_waiter_even_if_it_is_stopped(waiter, number):
    saver = start(waiter)
    if number == signal.SIGTERM:
        saver.suspend()
    waiter.end(number)
    wait_for_end([saver])
    assert waiter.count("no session bus") == 1


def test_both_end_when_the_bus_goes(waiter, bus):
    saver = start(waiter)
    bus.kill()
    assert waiter.status() == 1
    wait_for_end([saver])
    assert waiter.count("the session bus has gone") == 1


def test_both_end_when_the_display_goes(waiter):
    display = Display()
    waiter.environment["DISPLAY"] = display.name
    saver = start(waiter)
    display.server.kill()
    display.server.wait()
    assert waiter.status() == 1
    wait_for_end([saver])


def test_a_saver_that_ends_by_itself_waits_for_the_next_input_and_idle_time(display, waiter):
    first = start(waiter)
    first.terminate()
    wait_for_end([first])
    with pytest.raises(TimeoutError):
        wait_until(lambda: descendants(waiter.process, "sleep"), 2)
    display.press("a")
    second = wait_until(lambda: descendants(waiter.process, "sleep"))[0]
    display.press("a")
    wait_for_end([second])


@pytest.mark.parametrize("minutes", ["", "x", "-1", "1e9", "nan", "0.001", "3 "])
def test_other_than_a_number_of_minutes_is_refused(make, minutes):
    waiter = make(Program, None, f"{PROGRAM}-idle")
    assert waiter.run(minutes) == 2
    assert waiter.count("takes a number of minutes") == 1
