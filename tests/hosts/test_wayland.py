"""The program in compositors with and without the layer shell."""
import re

import pytest

from harness.display import Display
from harness.processes import kill, wait_until
from harness.program import ROOT
from harness.session import Cage, Sway
from harness.sights import is_map, is_splash, wait_to_see


@pytest.fixture
def screen(make):
    """What all monitors show, one above the other, each as large as the screen."""
    return make(Display, 1024, 768)


@pytest.fixture
def sway(make, screen):
    return make(Sway, screen)


def test_it_covers_monitors_that_come_and_go_and_a_signal_ends_all(sway, screen):
    sway.launch()
    main, covering_first = sway.show(1 + 1)  # the main process shows nothing
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
    main.terminate()
    sway.wait_for_end()


def test_any_input_ends_all_but_a_pointer_that_trembles(sway, screen):
    sway.launch()
    sway.add_monitor()
    for act in lambda: screen.press("a"), screen.click, lambda: screen.move_pointer(700, 500):
        screen.move_pointer(500, 400)
        sway.show(1 + 2)
        assert not screen.cursor_is_visible()
        ticks = sway.log().count("tick ")
        for x in 502, 499, 501:
            screen.move_pointer(x, 401)
        wait_until(lambda: sway.log().count("tick ") >= ticks + 4)
        assert len(sway.savers()) == 1 + 2
        act()
        sway.wait_for_end()


def test_all_end_with_the_main_process_and_one_that_crashes_is_replaced(sway, screen):
    sway.launch()
    main, _ = sway.show(1 + 1)
    kill([main])
    sway.wait_for_end()

    main, crashing = sway.show(1 + 1)
    kill([crashing])
    wait_until(lambda: crashing not in sway.savers() and len(sway.savers()) == 1 + 1)
    wait_to_see(is_map, screen)
    sway.savers()[1].suspend()
    main.terminate()
    sway.wait_for_savers(0)


def test_it_comes_and_goes_by_the_recipe_for_swayidle(sway, screen):
    recipe = re.search(r"^ +(exec swayidle.* timeout )\d+( .*)", (ROOT / "docs/WAYLAND.md").read_text(), re.M)
    sway.environment["PATH"] = "/usr/libexec/xscreensaver:/usr/bin:/bin"
    sway.environment["https_proxy"] = "http://127.0.0.1:9"
    sway.launch(f"{recipe[1]}2{recipe[2]}")
    for key in "a", "Escape":
        sway.wait_for_savers(1 + 1)
        wait_to_see(is_splash, screen)
        screen.press(key)
        sway.wait_for_end()


def test_without_layers_it_fills_the_screen_until_any_input_or_a_signal_ends_it(make, screen):
    cage = make(Cage, screen)
    cage.launch()
    for end in lambda _: screen.press("a"), lambda main: main.terminate():
        main, _ = cage.show(1 + 1)
        assert not screen.cursor_is_visible()
        end(main)
        cage.wait_for_end()
