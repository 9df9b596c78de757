import pathlib

import pytest

from harness.display import MonitorDisplay

pytest.register_assert_rewrite("contract")


@pytest.fixture
def monitors(make):
    """A display whose monitors come, go and change."""
    if obstacle := MonitorDisplay.obstacle():
        pytest.skip(obstacle)
    return make(MonitorDisplay, pathlib.Path(__file__).with_name("xorg-dummy.conf"))
