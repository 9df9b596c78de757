"""The splash, the fades and the quakes on the screen."""
import numpy
import pytest

from harness import sights
from harness.sights import is_black, is_dark, is_map, is_splash, wait_to_see

GOOD_EVENT = """
<event><type>earthquake</type>
<origin><time><value>2011-02-21T23:51:42.34Z</value></time><latitude><value>-43.4935</value></latitude>
<longitude><value>172.713</value></longitude><depth><value>4.8</value></depth></origin>
<magnitude><mag><value>6.1</value></mag></magnitude></event>"""


def feed(events):
    return f"<quakeml><eventParameters>{events}</eventParameters></quakeml>"


def test_the_splash_fills_the_window_with_its_text_at_the_upper_left(display, program):
    program.start("--demo")
    wait_to_see(is_splash, display)
    assert program.count("tellmar: ") == 0  # unasked it reports nothing
    splash = sights.picture(display)
    assert is_dark(splash[:60, 10:640]).sum() > 200
    assert not is_dark(splash[60:120, 10:640]).any()
    assert not is_black(splash).any()
    assert (~is_splash(sights.middle(splash))).sum() > 1000  # the faint map


def test_no_frame_of_a_fade_has_an_unpainted_or_a_white_edge(display, program):
    program.start("--demo", "--verbose", "--speed", "15")
    wait_to_see(is_splash, display)
    frames = mixed = 0
    while program.count("fade: ") < 4 and program.is_running():
        frame = sights.picture(display)
        edges = sights.edges(frame)
        assert not (is_black(edges) | (edges.min(-1) > 235)).any()
        frames += 1
        mixed += not (is_splash(frame[0, 0]) or is_map(frame[0, 0]))
    assert frames > 50
    assert mixed, "no picture was taken of the first fade"
    wait_to_see(is_map, display)


def test_ten_quakes_appear_and_then_the_first_comes_again(display, program):
    program.start("--demo", "--verbose", "--speed", "20")
    seen = []
    for fade in range(1, 12):
        program.wait_for("fade: ", fade)
        seen.append(sights.picture_at_rest(display))
        edges = sights.edges(seen[-1])
        assert not (is_splash(edges) | is_black(edges)).any()
    assert len({picture.tobytes() for picture in seen[:10]}) == 10
    # The second handed out appeared first, so the eleventh to appear is the one handed out first.
    assert numpy.array_equal(seen[10], seen[1])
    assert program.count("fetch ") == 1


def cut_off(handler):
    text = feed(GOOD_EVENT).encode()
    handler.send(text[: len(text) // 2], length=len(text))


BAD_ANSWERS = {
    "not found": lambda handler: handler.send(feed(GOOD_EVENT).encode(), status=404),
    "a page instead": lambda handler: handler.send(b"<!DOCTYPE html><html><body><p>Maintenance<br></body></html>"),
    "cut off": cut_off,
    "another document": lambda handler: handler.send(f"<feed>{GOOD_EVENT}</feed>".encode()),
}


@pytest.mark.parametrize("answer", BAD_ANSWERS.values(), ids=BAD_ANSWERS)
def test_a_bad_answer_leaves_the_splash_on_the_screen(display, program, server, answer):
    server.answer = answer
    program.start("--fullscreen", "--verbose", "--speed", "50", "--feed", server.url)
    program.wait_for("fetch ")
    program.wait_for("tick ", 4)
    assert sights.shows(display, is_splash)
    assert program.count("page: ") == 0
    assert server.request_count == 1


def test_odd_values_reach_the_map_as_nothing_harmful(display, program, server):
    odd = GOOD_EVENT.replace("2011-02-21T23:51:42.34Z", "');document.body.remove();('\"").replace("4.8", "-inf")
    server.serve(feed(odd + GOOD_EVENT.replace("6.1", "1e300")))
    program.start("--verbose", "--speed", "50", "--feed", server.url)
    program.wait_for("fade: ", 3)
    wait_to_see(is_map, display)
    assert server.request_count == 1
