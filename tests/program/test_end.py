"""How the program ends, and what it survives."""
import signal

import pytest

from harness.processes import are_gone, descendants, end_at_once
from harness.sights import SPLASH, is_map, is_splash, wait_to_see
from harness.waiting import wait_until

PROMPTLY = 2  # seconds on a busy machine; a host waits for it in a blocking way


def end_cleanly(program, number=signal.SIGTERM):
    family = descendants(program.process)
    program.process.send_signal(number)
    assert program.status(PROMPTLY) == 0
    assert not program.temporary_folders()
    assert are_gone(family)


def kill_web_process(program):
    processes = descendants(program.process, "WebKitWebProcess")
    assert processes
    end_at_once(processes)


@pytest.mark.parametrize("number", [signal.SIGTERM, signal.SIGINT, signal.SIGHUP])
def test_a_signal_ends_the_splash(program, number):
    program.start("--demo", "--verbose")
    program.wait_for("page: loaded")
    assert program.temporary_folders()
    end_cleanly(program, number)


def test_a_signal_ends_a_fade_half_way(display, program):
    program.start("--demo", "--verbose", "--speed", "8")
    wait_to_see(is_splash, display)
    wait_until(lambda: display.pixel(0, 0) != SPLASH)
    assert program.count("fade: ") == 0  # it is traced when it is over
    end_cleanly(program)
    assert program.count("fade: ") == 1


def test_a_signal_or_the_end_of_the_window_ends_a_fetch_that_hangs(make, display, program, server):
    server.keep_silent()
    program.start("--feed", server.url)
    wait_until(lambda: server.request_count == 1)
    end_cleanly(program)

    window = display.create_window(1280, 720)
    program.start("--feed", server.url, "--window-id", hex(window.id))
    wait_until(lambda: server.request_count == 2)
    display.destroy(window)
    assert program.status(PROMPTLY) == 0


@pytest.mark.parametrize("key", ["Escape", "q", None])
def test_a_key_or_closing_ends_a_window_of_its_own(display, program, key):
    program.start("--demo", "--verbose", "--speed", "20")
    program.wait_for("page: loaded")
    window = display.window_with_title("Tellmar")
    display.focus(window)
    display.press("a")
    program.wait_for("tick ", 2)
    if key:
        display.press(key)
    else:
        display.ask_to_close(window)
    assert program.status(PROMPTLY) == 0


def test_a_web_process_that_is_killed_starts_again_with_its_pages_before_any_tick(program):
    program.start("--demo", "--verbose", "--speed", "0.1")
    program.wait_for("page: loaded", 2)
    kill_web_process(program)
    program.wait_for("page: loaded", 4)
    assert program.count("tick") == 0
    end_cleanly(program)


def test_the_display_goes_on_after_the_loss_of_a_web_process(display, program):
    program.start("--demo", "--verbose", "--speed", "15")
    program.wait_for("fade: ")
    pages, fades = program.count("page: loaded"), program.count("fade: ")
    kill_web_process(program)
    program.wait_for("page: the web process ended")
    program.wait_for("page: loaded", pages + 3)
    program.wait_for("fade: ", fades + 3)
    wait_to_see(is_map, display)
