"""How the program ends, and what it survives."""
import signal
import threading

import pytest

from harness.processes import descendants, kill, wait_for_end, wait_until
from harness.sights import is_map, is_splash, wait_to_see

PROMPTLY = 2  # seconds on a busy machine; hosts wait for it in a blocking way


def end_cleanly(program, number=signal.SIGTERM):
    helpers = descendants(program.process)
    assert program.end(number, PROMPTLY) == 0
    assert not program.remains()
    wait_for_end(helpers)


@pytest.mark.parametrize(
    "number, moment", [(signal.SIGTERM, "page: loaded"), (signal.SIGINT, "tick 2"), (signal.SIGHUP, "fade: ")]
)
def test_a_signal_ends_the_program(program, number, moment):
    program.start("--demo", "--verbose", "--speed", "8")
    program.wait_for(moment)
    assert program.remains()
    end_cleanly(program, number)


def test_a_signal_or_the_end_of_the_window_ends_a_fetch_that_hangs(display, program, server):
    server.answer = lambda handler: threading.Event().wait()
    program.start("--feed", server.url)
    wait_until(lambda: server.request_count == 1)
    wait_to_see(is_splash, display)
    end_cleanly(program)

    window = display.create_window(1280, 720)
    program.start("--feed", server.url, "--window-id", hex(window.id))
    wait_until(lambda: server.request_count == 2)
    display.destroy(window)
    assert program.status(PROMPTLY) == 0


@pytest.mark.parametrize("keys", [["Escape"], ["Caps_Lock", "q"], []])
def test_a_key_or_closing_ends_a_window_of_its_own(display, program, keys):
    program.start("--demo", "--verbose", "--speed", "20")
    program.wait_for("page: loaded")
    window = display.window_with_title("Tellmar")
    display.focus(window)
    display.press("a")
    program.wait_for("tick ", 3)
    for key in keys:
        display.press(key)
    if not keys:
        display.ask_to_close(window)
    assert program.status(PROMPTLY) == 0


def test_the_display_goes_on_after_the_loss_of_a_web_process(display, program):
    program.start("--demo", "--verbose", "--speed", "8")
    program.wait_for("page: loaded", 2)
    kill(descendants(program.process, "WebKitWebProcess"))  # under the splash
    program.wait_for("page: the web process ended")
    program.wait_for("page: loaded", 4)
    program.wait_for("fade: ")
    kill(descendants(program.process, "WebKitWebProcess"))
    program.wait_for("page: the web process ended", 3)
    program.wait_for("fade: ", 3)
    wait_to_see(is_map, display)
    end_cleanly(program)
