"""The windows in which the program draws."""
import pytest

from harness.processes import wait_until
from harness.sights import is_black, is_map, picture, shows_preview, wait_to_see


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


def test_a_small_window_shows_the_still_image_at_once_and_it_follows_the_size(display, program):
    window = display.create_window(200, 150)
    program.start("--demo", "--speed", "0.1", "--window-id", hex(window.id))  # the first tick after 150 seconds
    for width, height in (200, 150), (565, 317):
        window.configure(width=width, height=height)
        wait_until(lambda: shows_preview(display, (0, 0, width, height)))
