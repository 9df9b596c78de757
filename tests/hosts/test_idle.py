"""The waiter on desktops without a screen-saver host."""
import pytest

from harness.desktops import GnomeShell, KWin, Openbox
from harness.processes import kill, wait_for_end
from harness.program import PROGRAM


@pytest.fixture(params=[GnomeShell, KWin, Openbox])
def desktop(make, request):
    return make(request.param, request.param.display_of(make))


def test_an_idle_session_is_covered_until_a_key_which_goes_nowhere_else(desktop):
    desktop.open_window()
    desktop.start_waiter()
    for key, next_key in ("a", "x"), ("b", "y"):
        desktop.wait_until_covered()
        desktop.display.press(key)
        desktop.wait_for_end()
        desktop.type_until_seen(next_key)
    assert not {"typed a", "typed b"} & set(desktop.log().splitlines())
    desktop.wait_for_saver()
    desktop.display.press("c")  # while windows are still coming
    desktop.wait_for_end()
    desktop.type_until_seen("z")


def test_it_stays_away_while_the_session_is_locked_or_a_player_plays(desktop):
    desktop.start_waiter()
    desktop.wait_for_saver()
    desktop.lock()
    desktop.display.press("Shift_L")  # not on every desktop a locker ends the saver at once
    desktop.wait_for_savers(0)
    assert desktop.stays([])
    player = desktop.play()
    desktop.unlock()
    assert desktop.stays([])
    kill([player])
    desktop.wait_for_saver()
    desktop.crash()
    desktop.wait_for_end_of_all()


def test_a_kiosk_keeps_kwin_from_being_idle(make):
    desktop = make(KWin, KWin.display_of(make))
    desktop.start_and_stay(f"{PROGRAM} --kiosk --demo --speed 40")
    desktop.wait_until_covered()
    kiosk = desktop.savers()
    desktop.start_waiter()
    assert desktop.stays(kiosk)
    desktop.display.press("q")
    wait_for_end(kiosk)
    desktop.wait_for_saver()
    desktop.crash()
    desktop.wait_for_end_of_all()
