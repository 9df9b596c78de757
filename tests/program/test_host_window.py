"""The windows in which the program draws."""
import threading

import pytest
from Xlib import Xatom

from harness.processes import wait_until
from harness.program import SAMPLE_FEED
from harness.sights import is_black, is_map, is_splash, picture, shows, shows_preview, wait_to_see


def test_the_picture_fills_a_window_given_by_option_and_follows_its_size(display, program):
    window = display.create_window(800, 600)
    assert display.cursor_is_visible()
    program.start("--demo", "--speed", "20", "-root", "-window-id", hex(window.id))
    for width, height in (800, 600), (1200, 720), (700, 400):
        window.configure(width=width, height=height)
        wait_to_see(is_map, display, (0, 0, width, height))
        assert is_black(picture(display, (width, 0, 1280 - width, 720))).all()  # no window of its own
        assert not display.cursor_is_visible()


@pytest.mark.parametrize("moment", ["fetch ", "page: loaded", "tick 2", "fade: ", "tick 3"])
def test_the_program_ends_with_its_window(display, program, moment):
    window = display.create_window(1280, 720)
    program.start("--demo", "--verbose", "--speed", "20", "--window-id", hex(window.id))
    program.wait_for(moment)
    display.destroy(window)
    assert program.status() == 0
    assert not program.remains()


@pytest.fixture
def silent(server):
    """An event that makes a service answer that was silent until then."""
    answering = threading.Event()
    server.answer = lambda handler: answering.wait() and handler.send(SAMPLE_FEED.encode())
    yield answering
    answering.set()


def test_the_splash_is_there_before_the_answer_and_nothing_is_black_until_the_map(display, program, server, silent):
    window = display.create_window(1024, 600)
    program.start("--feed", server.url, "--speed", "20", "--window-id", hex(window.id))
    corners = []

    def look(sight, area):
        corners.append(picture(display, (0, 0, 40, 40)))
        return shows(display, sight, area)

    wait_until(lambda: server.request_count == 1 and look(is_splash, (0, 0, 1024, 600)))
    window.configure(width=1280, height=720)
    wait_until(lambda: look(is_splash, (0, 0, 1280, 720)))
    silent.set()
    wait_until(lambda: look(is_map, (0, 0, 1280, 720)))
    assert not any(is_black(corner).all() for corner in corners)


@pytest.mark.parametrize("source", ["sample feed", "silent service"])
def test_a_small_window_shows_the_still_image_at_once_and_it_follows_the_size(display, program, server, silent, source):
    window = display.create_window(200, 150)
    feed = ["--demo"] if source == "sample feed" else ["--feed", server.url]
    program.start(*feed, "--window-id", hex(window.id))  # the first tick comes after 15 seconds
    for width, height in (200, 150), (565, 317):
        window.configure(width=width, height=height)
        wait_until(lambda: shows_preview(display, (0, 0, width, height)), patience=10)


@pytest.mark.parametrize("is_virtual_root", [False, True])
def test_a_window_in_another_and_smaller_than_the_screen_is_a_preview(display, program, is_virtual_root):
    outer = display.create_window(1280, 720)
    if is_virtual_root:
        outer.change_property(display.connection.intern_atom("__SWM_VROOT"), Xatom.WINDOW, 32, [outer.id])
    window, area = display.create_window(800, 600, outer), (0, 0, 800, 600)
    program.start("--demo", "--window-id", hex(window.id))  # the first map comes after 30 seconds
    sight = (lambda: shows(display, is_splash, area)) if is_virtual_root else (lambda: shows_preview(display, area))
    wait_until(sight, patience=20)
