"""The settings sheet, used with the keyboard."""
import pytest

from harness.processes import wait_until


@pytest.mark.parametrize("key, stored", [("Return", 300), ("Escape", 5)])
def test_only_ok_stores_the_time_that_the_slider_stands_for(display, program, key, stored):
    settings = program.path / "settings/tellmar/org.tellmar.TellmarScreenSaver.ini"
    program.start("--configure")
    sheet = wait_until(lambda: display.window_with_title("Tellmar settings"))
    assert "DisplayQuakeForNSeconds=5\n" in settings.read_text()  # stored at the first look
    display.focus(sheet)
    display.press("Home")  # the rate slider's lowest value, 50: the longest time
    display.press(key)
    assert program.status() == 0
    assert f"DisplayQuakeForNSeconds={stored}\n" in settings.read_text()
