"""What holds in every host."""
import pytest

from harness.display import Display
from harness.processes import are_gone, descendants, end_at_once, family_of
from harness.sights import is_map, shows_preview, wait_to_see
from harness.waiting import wait_until

SCREEN = (0, 0, 1280, 720)


def expect_end(host, family):
    assert are_gone(family)
    host.wait_for_savers(0)  # another one may have just begun
    assert not host.remains()


class HostContract:
    """A test class inherits it for its kind of host."""

    KIND = None

    @pytest.fixture(autouse=True)
    def host_is_installed(self):
        if obstacle := self.KIND.obstacle():
            pytest.skip(obstacle)

    def test_the_saver_fills_the_screen_until_the_host_ends_it(self, make, display):
        host = make(self.KIND, display)
        saver = host.show("--root --demo --verbose --speed 20")
        wait_to_see(is_map, display)
        assert saver.nice() == 10
        assert host.remains()
        family = family_of(saver)
        assert len(family) > 1
        host.command("deactivate")
        expect_end(host, family)
        assert "crashed" not in host.log()
        host.command("activate")
        host.wait_for_savers(1)

    def test_the_saver_ends_when_the_host_is_killed(self, make, display):
        host = make(self.KIND, display)
        family = family_of(host.show("--root --demo"))
        wait_until(host.remains)
        host.crash()
        expect_end(host, family)

    def test_the_saver_stays_when_the_resolution_changes(self, make, monitors):
        host = make(self.KIND, monitors)
        saver = host.show("--demo --speed 20")
        wait_to_see(is_map, monitors, SCREEN)
        monitors.set_monitor(0, 0, "1024x768")
        wait_to_see(is_map, monitors, (0, 0, 1024, 768))
        assert host.savers() == [saver]

    def test_the_preview_is_in_the_settings_until_they_are_gone(self, make):
        display = make(Display, 1920, 1080)
        host = make(self.KIND, display)
        host.launch("--demo --verbose --speed 0.1")
        settings = host.open_settings()
        saver = wait_until(lambda: descendants(settings, "tellmar"))[0]
        window = display.window(int(saver.environ()["XSCREENSAVER_WINDOW"], 16))
        wait_until(lambda: shows_preview(display, display.area_of(window)))
        family = family_of(saver)
        end_at_once(descendants(settings, self.KIND.SETTINGS))
        expect_end(host, family)
