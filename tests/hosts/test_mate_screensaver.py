from contract import SCREEN, HostContract, expect_end
from harness.processes import family_of
from harness.session import MateScreensaver
from harness.sights import is_light, is_map, middle, picture, wait_to_see
from harness.waiting import wait_until


def shows_dialog(display):
    """Large and light in the middle, as nothing on a map is."""
    return is_light(middle(picture(display), 6)).mean() > 1 / 2


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
        wait_to_see(is_map, display)
        assert not shows_dialog(display)
        assert host.savers() == [saver]

    def test_each_monitor_has_a_saver_while_monitors_come_and_go(self, make, monitors):
        """The host takes a new monitor for somebody's wish to go on working, and ends its savers."""
        host = make(self.KIND, monitors)
        first = host.show("--demo --speed 20")
        wait_to_see(is_map, monitors, SCREEN)
        family = family_of(first)
        monitors.set_monitor(1, 1280, "800x600")
        expect_end(host, family)

        host.command("activate")
        both = host.wait_for_savers(2)
        for area in SCREEN, (1280, 0, 800, 600):
            wait_to_see(is_map, monitors, area)
        monitors.remove_monitor(1)
        assert host.wait_for_savers(1)[0] in both
        wait_to_see(is_map, monitors, SCREEN)
