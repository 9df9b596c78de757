"""Processes that ask an event service, whose answer is the sample feed."""
import psutil
import pytest

from harness.processes import wait_until
from harness.program import SAMPLE_FEED, Program
from harness.sights import is_map, wait_to_see


def lines(program):
    return len(program.output().splitlines())


@pytest.mark.parametrize("status, count", [(200, 1 + 10), (404, 0)])
def test_processes_started_together_make_one_request(make, server, status, count):
    programs = [make(Program) for _ in range(4)]
    cache = f"{programs[0].path}/cache"

    def waits_for_its_turn(program):
        files = program.process.open_files() if program.is_running() else []
        return f"{cache}/tellmar/lock" in [file.path for file in files]

    def answer_when_all_wait(handler):
        wait_until(lambda: all(map(waits_for_its_turn, programs)))
        handler.send(SAMPLE_FEED.encode(), status)

    server.answer = answer_when_all_wait
    for each in programs:
        each.environment["XDG_CACHE_HOME"] = cache
        each.start("--list", "--service", server.url)
    assert [(each.status(), lines(each)) for each in programs] == [(int(status != 200), count)] * 4
    assert server.request_count == 1


def test_an_answer_is_kept_in_the_users_cache_unless_that_is_off(make, server):
    program = make(Program)
    server.serve(SAMPLE_FEED)
    for option, requests in ("--no-cache", 1), ("--verbose", 2), ("--no-cache", 3), ("--verbose", 3):
        assert program.run("--list", option, "--service", server.url) == 0
        assert lines(program) == 1 + 10
        assert server.request_count == requests
    assert (program.path / "home/.cache/tellmar").exists()


@pytest.mark.parametrize("in_a_hosts_window", [True, False])
def test_an_answer_after_a_failure_restarts_the_program_in_place(display, program, server, in_a_hosts_window):
    server.serve("", 404)
    program.environment["TELLMAR_MINUTE_MS"] = "300"
    window = ["--window-id", hex(display.create_window(1280, 720).id)] if in_a_hosts_window else []
    program.start("--verbose", "--speed", "20", "--service", server.url, *window)
    program.wait_for("still no answer")
    server.serve(SAMPLE_FEED)
    wait_to_see(is_map, display)
    assert program.count("restarting") == 1
    assert (program.process.name(), len(program.remains())) == ("tellmar", 1)
    assert psutil.STATUS_ZOMBIE not in [child.status() for child in program.process.children()]
    assert program.end() == 0
    assert not program.remains()
