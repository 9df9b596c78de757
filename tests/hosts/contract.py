"""What holds in every host."""
from harness.display import Display
from harness.processes import descendants, kill, wait_for_end, wait_until
from harness.sights import is_map, shows_preview, wait_to_see

SCREEN = (0, 0, 1280, 720)


class HostContract:
    """A test class inherits it for its KIND of host."""

    def test_the_saver_fills_the_screen_until_the_host_ends_it(self, make, display):
        host = make(self.KIND, display)
        saver = host.show("--root --demo --verbose --speed 20")
        wait_to_see(is_map, display)
        assert saver.nice() == 10
        helpers = descendants(saver)
        assert helpers and host.remains()
        host.command("deactivate")
        host.wait_for_end()
        wait_for_end(helpers)
        assert "crashed" not in host.log()
        host.command("activate")
        host.wait_for_savers(1)

    def test_the_saver_ends_when_the_host_is_killed(self, make, display):
        host = make(self.KIND, display)
        saver = host.show("--root --demo")
        wait_until(host.remains)
        helpers = descendants(saver)
        host.crash()
        host.wait_for_end()
        wait_for_end(helpers)

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
        settings = host.start_and_stay(self.KIND.SETTINGS)
        saver = host.wait_for_savers(1)[0]
        window = display.connection.create_resource_object("window", int(saver.environ()["XSCREENSAVER_WINDOW"], 16))
        wait_until(lambda: shows_preview(display, display.area_of(window)))
        kill(descendants(settings, self.KIND.SETTINGS))
        host.wait_for_end()
