"""The program as a guest of an event service."""
import threading

import pytest

from harness.program import Program
from harness.sights import is_map, wait_to_see
from harness.waiting import wait_until

ANSWER = """
<q:quakeml xmlns:q="http://quakeml.org/xmlns/quakeml/1.2" xmlns="http://quakeml.org/xmlns/bed/1.2">
<eventParameters><event><origin><time><value>2016-11-14T00:02:56+13:00</value></time>
<latitude><value>-42.69</value></latitude><longitude><value>173.02</value></longitude>
<depth><value>15000</value></depth></origin><magnitude><mag><value>7.8</value></mag></magnitude>
<type>earthquake</type></event></eventParameters></q:quakeml>"""
NOTHING = "There are no earthquakes to show.\n"
LISTED = " 1       7.80    15.00 km    -42.690    173.020  2016-11-13T11:02:56 +0000\n"


def waits_for_its_turn(program, cache):
    lock = cache / "tellmar/lock"
    return lock.exists() and str(lock) in (file.path for file in program.process.open_files())


@pytest.mark.parametrize("status, listed", [(200, LISTED), (404, NOTHING)])
def test_processes_started_together_make_one_request(make, server, status, listed):
    programs = [make(Program) for _ in range(4)]
    cache = programs[0].path / "cache"
    all_started = threading.Event()

    def answer_when_all_wait(handler):
        all_started.wait()
        wait_until(lambda: all(waits_for_its_turn(each, cache) for each in programs))
        handler.send(ANSWER.encode(), status)

    server.answer = answer_when_all_wait
    for each in programs:
        each.environment["XDG_CACHE_HOME"] = str(cache)
        each.start("--list", "--service", server.url)
    all_started.set()
    for each in programs:
        assert each.status() == 0
        assert listed in each.output()
    assert server.request_count == 1


def test_an_answer_is_kept_in_the_users_cache_unless_that_is_off(make, server):
    program = make(Program)
    cache = program.path / "home/.cache/tellmar"
    server.serve(ANSWER)

    def lists(*options):
        assert program.run("--list", *options, "--service", server.url) == 0
        return LISTED in program.output()

    assert lists("--no-cache")
    assert not cache.exists()
    assert lists()
    assert cache.exists()
    assert lists("--no-cache")
    assert server.request_count == 3
    server.serve("", 404)
    assert lists()
    assert server.request_count == 3


def test_the_saver_shows_the_answer_after_one_request(display, program, server):
    server.serve(ANSWER)
    program.start("--service", server.url, "--verbose", "--speed", "50")
    program.wait_for("fade: ", 3)
    wait_to_see(is_map, display)
    assert server.request_count == 1
