from contract import HostContract
from harness.processes import wait_until
from harness.session import MateScreensaver
from harness.sights import is_light, is_map, middle, wait_to_see


def shows_dialog(display):
    """Large and light in the middle, as nothing on a map is."""
    return is_light(middle(display, 6)).mean() > 1 / 2


class TestMateScreensaver(HostContract):
    KIND = MateScreensaver

    def test_the_saver_goes_on_after_the_unlock_dialog_during_which_it_was_stopped(self, make, display):
        host = make(self.KIND, display)
        saver = host.show("--demo --verbose --speed 20")
        host.command("lock")
        wait_to_see(is_map, display)
        display.press("a")
        wait_until(lambda: shows_dialog(display))
        fades = host.log().count("fade: ")
        display.press("Escape")
        wait_until(lambda: host.log().count("fade: ") >= fades + 3)
        wait_until(lambda: not shows_dialog(display))
        wait_to_see(is_map, display)
        assert host.savers() == [saver]
