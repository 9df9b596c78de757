"""The program over all monitors, in the real servers of displays."""
import pytest
from Xlib import X

from harness import desktops
from harness.display import Display, MonitorDisplay
from harness.processes import descendants, wait_for_end, wait_until
from harness.program import PROGRAM, SAMPLE_FEED, Program
from harness.sights import is_black, is_map, is_splash, picture, shows_map, wait_to_see

MONITORS = (0, 0, 1280, 720), (1280, 0, 1024, 768)
LATER_FEED = SAMPLE_FEED.replace("<value>5.", "<value>6.")


@pytest.fixture
def monitors(make):
    display = make(MonitorDisplay)
    display.set_monitor(1, 1280, "1024x768")
    return display


def wait_to_cover(display):
    for area in MONITORS:
        wait_to_see(is_map, display, area)


def keys_in(display):
    """Those that came to this test's own window since the last call."""
    events = [display.connection.next_event() for _ in range(display.connection.pending_events())]
    return [event for event in events if event.type == X.KeyPress]


def watch_until(question, display, areas):
    """Sees neither black nor the splash until the answer is true, and returns how often it looked: at the middle of each
    area, since the whole takes longer than a frame."""
    frames = 0
    while not question():
        for left, top, width, height in areas:
            pixels = picture(display, (left + width // 2, top + height // 2, 100, 100))
            assert not is_splash(pixels).any() and is_black(pixels).mean() < 0.5, f"after {frames} frames"
        frames += 1
    return frames


def test_fresh_quakes_come_to_each_monitor_without_a_flicker(make, monitors, server):
    server.serve(SAMPLE_FEED)
    program = make(Program, monitors)
    program.start("--kiosk", "--service", server.url, "--no-cache", "--speed", "60")
    wait_to_cover(monitors)
    savers = lambda: set(descendants(program.process, "tellmar"))
    first = wait_until(lambda: len(savers()) == 2 and savers())  # not while another process asks
    server.serve(LATER_FEED)
    assert watch_until(lambda: len(savers()) == 2 and not first & savers(), monitors, MONITORS) > 10
    second = savers()
    monitors.press("a")
    monitors.click()
    assert not monitors.cursor_is_visible()
    requests = server.request_count
    watch_until(lambda: server.request_count > requests + 1, monitors, MONITORS)  # asked again: the same quakes
    assert savers() >= second
    monitors.press("q")
    assert program.status() == 0
    wait_for_end(second)


@pytest.mark.parametrize("kind", [desktops.GnomeShell, desktops.KWin])
def test_fresh_quakes_come_without_a_flicker_under_wayland(make, server, kind):
    desktop = make(kind, kind.display_of(make))
    server.serve(SAMPLE_FEED)
    desktop.start_and_stay(f"{PROGRAM} --kiosk --service {server.url} --no-cache --speed 60")
    desktop.wait_until_covered()
    first = set(desktop.savers()[1:])
    server.serve(LATER_FEED)
    assert watch_until(lambda: not first & set(desktop.savers()), desktop.display, desktops.MONITORS) > 10
    desktop.wait_for_saver()


def test_each_monitor_stays_covered_when_gnome_changes_one(make):
    desktop = make(desktops.GnomeShell, make(Display, 1280 + 1600, 720))
    desktop.start_and_stay(f"{PROGRAM} --kiosk --demo --speed 10")
    desktop.wait_until_covered()
    desktop.widen_second_monitor()
    wait_until(lambda: shows_map(desktop.display, (1280, 0, 1600, 720)))


def test_a_key_ends_it_on_all_monitors_without_reaching_the_window_below(make, monitors):
    window = monitors.create_window(400, 300)
    window.change_attributes(event_mask=X.KeyPressMask)
    monitors.focus(window)
    program = make(Program, monitors)
    program.start("--fullscreen", "--demo", "--speed", "40")
    wait_to_cover(monitors)
    monitors.press("a")
    assert program.status() == 0
    assert monitors.connection.get_input_focus().focus == window
    assert not keys_in(monitors)
    monitors.press("b")
    wait_until(lambda: keys_in(monitors))


def test_nothing_is_covered_while_a_locker_has_the_keyboard(make, monitors):
    program = make(Program, monitors)
    monitors.root.grab_keyboard(False, X.GrabModeAsync, X.GrabModeAsync, X.CurrentTime)
    assert program.run("--fullscreen", "--demo") == 1
    assert "locker" in program.log()
