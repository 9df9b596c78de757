"""The splash, the fades and the quakes on the screen."""
import re

import numpy

from harness.processes import descendants, wait_until
from harness.sights import MIDDLE, is_black, is_dark, is_light, is_map, is_pink, is_splash, picture, wait_to_see


def edges(display):
    """The outermost pixels of the screen."""
    strips = (0, 0, 1280, 1), (0, 719, 1280, 1), (0, 0, 1, 720), (1279, 0, 1, 720)
    return numpy.concatenate([picture(display, strip).reshape(-1, 3) for strip in strips])


def call_in_page(program):
    """What the page that was written last shows."""
    [page] = program.path.glob("temporary/tellmar-*/*.html")
    return re.search(r"initializeMap\([^)]*\)", page.read_text())[0]


def test_the_splash_fills_the_window_with_its_text_at_the_upper_left(display, program):
    program.start("--demo")
    wait_to_see(is_splash, display)
    assert program.count("tellmar: ") == 0  # unasked it reports nothing
    assert is_dark(picture(display, (10, 0, 630, 60))).sum() > 200
    assert not is_dark(picture(display, (10, 60, 630, 60))).any()
    assert (~is_splash(picture(display, MIDDLE))).sum() > 1000  # the faint map


def test_no_frame_of_a_fade_has_an_unpainted_or_a_white_edge(display, program):
    program.start("--demo", "--verbose", "--speed", "15")
    wait_to_see(is_splash, display)
    frames = []

    def has_faded_four_times():
        frames.append(edges(display))
        return program.count("fade: ") >= 4

    wait_until(has_faded_four_times)
    assert len(frames) > 50
    assert not any((is_black(frame) | is_light(frame)).any() for frame in frames)
    assert any(not is_splash(frame[0]) and not is_map(frame[0]) for frame in frames), "no picture of the first fade"
    wait_to_see(is_map, display)


def test_a_fade_ends_in_what_the_window_draws_again(display, program):
    program.start("--demo", "--verbose", "--speed", "4")
    program.wait_for("fade: ", 2)
    still = 0, 0, 1280, 120  # no rings spread so far up
    after_fade = picture(display, still)
    display.destroy(display.create_window(1280, 720))
    wait_until(lambda: not is_pink(picture(display, still)).any())
    assert (picture(display, still) == after_fade).all()
    assert program.count("fade: ") == 2


def test_ten_quakes_appear_and_then_the_first_comes_again(display, program):
    program.start("--demo", "--verbose", "--speed", "6")
    calls = []
    for fade in range(2, 13):
        program.wait_for("fade: ", fade)
        assert not (is_splash(edges(display)) | is_black(edges(display))).any()
        program.wait_for("page: loaded", fade + 1)
        calls.append(call_in_page(program))
    assert len(set(calls[:10])) == 10
    assert calls[10] == calls[0]
    assert program.count("fetch ") == 1


def test_no_graphics_driver_is_loaded_beside_the_web_processes(program):
    program.start("--demo", "--fullscreen", "--verbose")
    program.wait_for("page: loaded")
    processes = program.process, *descendants(program.process, "tellmar")
    assert len(processes) == 2
    loaded = {each.path for process in processes for each in process.memory_maps()}
    assert not [path for path in loaded if re.search(r"libEGL_|libGLX_|_dri\.so|libgallium", path)]
