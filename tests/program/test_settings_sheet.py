"""The settings sheet, used with the keyboard."""
import pytest

from harness.waiting import wait_until


def stored(program):
    return (program.path / "settings/tellmar/org.tellmar.TellmarScreenSaver.ini").read_text()


@pytest.fixture
def sheet(display, program):
    """The open sheet's window, which has the keyboard."""
    program.start("--configure")
    window = wait_until(lambda: display.window_with_title("Tellmar settings"))
    display.focus(window)
    return window


def test_ok_stores_the_time_that_the_slider_stands_for(display, program, sheet):
    display.press("Home")  # the rate slider's lowest value, 50: the longest time
    display.press("Return")
    assert program.status() == 0
    assert "DisplayQuakeForNSeconds=300\n" in stored(program)


@pytest.mark.parametrize("way", ["Escape", "closing"])
def test_cancel_and_closing_store_nothing(display, program, sheet, way):
    before = stored(program)
    assert "DisplayQuakeForNSeconds=5\n" in before  # stored at the first look
    display.press("Home")
    if way == "closing":
        display.ask_to_close(sheet)
    else:
        display.press(way)
    assert program.status() == 0
    assert stored(program) == before
