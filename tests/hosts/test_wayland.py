"""The program in compositors with and without the layer shell."""
import re
import signal

import pytest

from harness.display import Display
from harness.processes import end_at_once
from harness.program import ROOT, copy_program
from harness.session import Cage, Sway
from harness.sights import is_light, is_map, is_splash, middle, picture, wait_to_see
from harness.waiting import wait_until


@pytest.fixture
def screen(make):
    """What all monitors show, one above the other, each as large as the screen."""
    return make(Display, 1024, 768)


@pytest.fixture
def sway(make, screen):
    if obstacle := Sway.obstacle():
        pytest.skip(obstacle)
    return make(Sway, screen)


@pytest.fixture
def cage(make, screen):
    if obstacle := Cage.obstacle():
        pytest.skip(obstacle)
    return make(Cage, screen)


def test_it_covers_monitors_that_come_and_go_and_a_signal_ends_all(sway, screen):
    sway.launch()
    sway.show(1 + 1)  # the first process shows nothing
    covering_first = sway.savers()[1]
    sway.add_monitor()
    sway.wait_for_savers(1 + 2)
    wait_to_see(is_map, screen)

    sway.remove_monitor(1)
    assert covering_first not in sway.wait_for_savers(1 + 1)
    sway.remove_monitor(2)
    sway.wait_for_savers(1)
    sway.add_monitor()
    sway.wait_for_savers(1 + 1)
    wait_to_see(is_map, screen)

    sway.savers()[0].send_signal(signal.SIGTERM)
    sway.expect_nothing_left()


def test_any_input_ends_all_but_a_pointer_that_trembles(sway, screen):
    def move_slowly():
        for x in range(501, 510):
            screen.move_pointer(x, 400)

    sway.launch()
    sway.add_monitor()
    for act in lambda: screen.press("a"), screen.click, lambda: screen.move_pointer(700, 500), move_slowly:
        screen.move_pointer(500, 400)
        sway.show(1 + 2)
        assert not screen.cursor_is_visible()
        ticks = sway.log().count("tick ")
        for x in 502, 499, 501:
            screen.move_pointer(x, 401)
        wait_until(lambda: sway.log().count("tick ") >= ticks + 4)
        assert len(sway.savers()) == 1 + 2
        act()
        sway.expect_nothing_left()


def test_a_process_that_crashes_is_replaced_and_one_that_is_stopped_ends_with_the_others(sway, screen):
    sway.launch()
    sway.show(1 + 1)
    crashed = sway.savers()
    end_at_once(crashed[1:])
    wait_until(lambda: len(sway.savers()) == 2 and sway.savers() != crashed)
    wait_to_see(is_map, screen)

    first, stopped = sway.savers()
    stopped.suspend()
    first.terminate()
    sway.wait_for_savers(0)


def test_the_others_end_with_the_first_process(sway):
    sway.launch()
    sway.show(1 + 1)
    end_at_once(sway.savers()[:1])
    sway.expect_nothing_left()


def test_it_reports_what_is_missing_where_the_user_sees_it(sway, screen):
    program = copy_program(sway.path / "home", lacking="map.html")
    sway.launch()
    sway.start_and_stay(f"{program} --fullscreen --demo")
    wait_until(lambda: is_light(middle(picture(screen))).sum() > 200)  # white letters
    screen.press("a")
    sway.expect_nothing_left()


def test_it_comes_and_goes_by_the_recipe_for_swayidle(sway, screen):
    recipe = re.search(r"^ +(exec swayidle.* timeout )\d+( .*)", (ROOT / "docs/WAYLAND.md").read_text(), re.M)
    sway.environment["PATH"] = "/usr/libexec/xscreensaver:/usr/bin:/bin"
    sway.environment["https_proxy"] = "http://127.0.0.1:9"
    sway.launch(f"{recipe[1]}2{recipe[2]}")
    for key in "a", "Escape":
        sway.wait_for_savers(1 + 1)
        wait_to_see(is_splash, screen)
        screen.press(key)
        sway.expect_nothing_left()


def test_without_layers_it_fills_the_screen_until_the_user_or_a_signal_ends_it(cage, screen):
    cage.launch()
    for key in "Escape", "q", None:
        cage.show(1)
        assert not screen.cursor_is_visible()
        if key:
            screen.press(key)
        else:
            cage.savers()[0].terminate()
        cage.expect_nothing_left()
