from contract import SCREEN, HostContract
from harness.session import XScreenSaver
from harness.sights import is_map, wait_to_see


class TestXScreenSaver(HostContract):
    KIND = XScreenSaver

    def test_each_monitor_has_a_saver_while_monitors_come_and_go(self, make, monitors):
        host = make(self.KIND, monitors)
        first = host.show("--demo --speed 20")
        wait_to_see(is_map, monitors, SCREEN)
        monitors.set_monitor(1, 1280, "800x600")
        assert first in host.wait_for_savers(2)
        wait_to_see(is_map, monitors, (1280, 0, 800, 600))
        monitors.remove_monitor(1)
        assert host.wait_for_savers(1) == [first]
        wait_to_see(is_map, monitors, SCREEN)
