"""Processes that ask an event service, whose answer is the sample feed."""
import threading

import pytest

from harness.processes import wait_until
from harness.program import SAMPLE_FEED, Program

NOTHING = "There are no earthquakes to show.\n"


@pytest.fixture
def listed(make):
    program = make(Program)
    assert program.run("--list", "--demo") == 0
    return program.output()


def waits_for_its_turn(program, cache):
    return f"{cache}/tellmar/lock" in [file.path for file in program.process.open_files()]


@pytest.mark.parametrize("status", [200, 404])
def test_processes_started_together_make_one_request(make, server, listed, status):
    programs = [make(Program) for _ in range(4)]
    cache = programs[0].path / "cache"
    all_started = threading.Event()

    def answer_when_all_wait(handler):
        all_started.wait()
        wait_until(lambda: all(waits_for_its_turn(each, cache) for each in programs))
        handler.send(SAMPLE_FEED.encode(), status)

    server.answer = answer_when_all_wait
    for each in programs:
        each.environment["XDG_CACHE_HOME"] = str(cache)
        each.start("--list", "--service", server.url)
    all_started.set()
    for each in programs:
        assert each.status() == 0
        assert each.output() == (listed if status == 200 else NOTHING)
    assert server.request_count == 1


def test_an_answer_is_kept_in_the_users_cache_unless_that_is_off(make, server, listed):
    program = make(Program)
    cache = program.path / "home/.cache/tellmar"
    server.serve(SAMPLE_FEED)
    for option, is_kept in ("--no-cache", False), ("--verbose", True), ("--no-cache", True):
        assert program.run("--list", option, "--service", server.url) == 0
        assert program.output() == listed
        assert cache.exists() == is_kept
    assert server.request_count == 3
    assert program.run("--list", "--service", server.url) == 0
    assert program.output() == listed
    assert server.request_count == 3
