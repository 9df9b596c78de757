#!/usr/bin/python3
"""Runs the program for many ticks against an event service that fails in another way at each start. Fails when memory,
descriptors, threads or processes grow.

usage: bench/soak.py PROGRAM [--ticks 20000] [--speed 200] [--samples FILE]

A start is a round, and the first round's answer is cached for the others. The growth of a quantity is the slope of a
line through its points by least squares, with a level of its own for each round. A point is the lowest of a few samples,
which leaves out the peaks between two garbage collections. A quantity is flat when its slope and twice the slope's
standard error stay within the bound together. A run that is too short to tell fails too.
"""
import argparse
import contextlib
import hashlib
import os
import pathlib
import re
import struct
import socket
import sys
import threading
import time

import numpy
import psutil

sys.dont_write_bytecode = True
sys.path.insert(0, str(pathlib.Path(__file__).resolve().parent.parent / "tests"))

from harness.display import Display  # noqa: E402 found in the path from above
from harness.processes import wait_until  # noqa: E402
from harness.program import SAMPLE_FEED  # noqa: E402
from harness.server import Server  # noqa: E402
from program import Saver  # noqa: E402
from service import HEAD, PICK  # noqa: E402

FEED = SAMPLE_FEED.encode()
SAMPLES = 200  # in a round, at most
SAMPLES_OF_A_POINT = 10
WARM_UP = 0.2  # the share of a round until the caches are full
# What a quantity may grow in 1,000 ticks; megabytes for memory, which the web process's collector and WebKit's allocator
# let wander.
BOUNDS = {"memory of all": 15, "memory of the program": 2, "descriptors": 0.5, "threads": 0.5, "processes": 0.2}


def answer_with(status):
    return lambda handler: handler.send(b"no luck", status)


def answer_slowly(handler):
    handler.send(b"", length=len(FEED))
    for at in range(0, len(FEED), 200):
        time.sleep(0.02)
        handler.wfile.write(FEED[at : at + 200])


def answer_hugely(handler):
    handler.send(HEAD, length=1 << 30)
    with contextlib.suppress(OSError):  # the program closes the connection
        while True:
            handler.wfile.write(PICK * 1000)


def answer_nothing(handler):
    handler.server.is_changing.wait()


def reset(handler):
    handler.connection.setsockopt(socket.SOL_SOCKET, socket.SO_LINGER, struct.pack("ii", 1, 0))
    handler.connection.close()


FAULTS = {
    "none": lambda handler: handler.send(FEED),
    "slow": answer_slowly,
    "500": answer_with(500),
    "429": answer_with(429),
    "truncated": lambda handler: handler.send(FEED[: len(FEED) // 2], length=len(FEED)),
    "garbage": lambda handler: handler.send(os.urandom(100_000)),
    "not modified": answer_with(304),
    "huge": answer_hugely,
    "silent": answer_nothing,
    "reset": reset,
    "gone": None,
}


class Service(Server):
    def __init__(self):
        super().__init__()
        self.is_changing = threading.Event()

    def change(self, answer):
        self.is_changing.set()
        self.is_changing = threading.Event()
        if answer:
            self.answer = answer
        else:
            self.close()

    def handle_error(self, *_):
        pass  # connections that end early are what this is about


class Soak(Saver):
    def ticks(self):
        with open(self.path / "stderr", "rb") as log:
            log.seek(max(0, log.seek(0, os.SEEK_END) - 4096))
            found = re.findall(rb"tick (\d+)", log.read())
        return int(found[-1]) if found else 0

    def wait_for_tick(self, tick):
        wait_until(lambda: time.sleep(0.05) or not self.is_running() or self.ticks() >= tick, patience=300)
        if not self.is_running():
            raise SystemExit(f"the program ended with status {self.status()}:\n{self.log()[-2000:]}")

    def sample(self):
        while True:  # a process may end meanwhile
            with contextlib.suppress(psutil.NoSuchProcess, ProcessLookupError):
                family = self.family()
                threads = sum(each.num_threads() for each in family)
                memory = self.process.memory_full_info().uss / 2**20
                return self.pss(), memory, self.process.num_fds(), threads, len(family)

    def make_answers_old(self):
        """Dates the cached answers an hour back, so that the program asks again."""
        for path in self.path.glob("home/.cache/tellmar/answer-*"):
            kind, _, rest = path.read_bytes().split(b"\n", 2)
            service, url, asked, others = rest.split(b"\n", 3)
            rest = b"\n".join([service, url, b"%d" % (int(asked) - 3600), others])
            path.write_bytes(b"\n".join([kind, hashlib.sha256(rest).hexdigest().encode(), rest]))

    def run_round(self, server, ticks, speed):
        """Returns a row for each sample: the tick and what was measured."""
        self.make_answers_old()
        self.show("--speed", str(speed), source=("--service", server.url))
        rows = []
        for tick in numpy.linspace(1, ticks, min(SAMPLES, ticks)):
            self.wait_for_tick(tick)
            rows.append([self.ticks(), *self.sample()])
        if self.end() != 0 or self.remains():
            raise SystemExit(f"the program ended with status {self.status()} and left {self.remains()}")
        return numpy.array(rows, float)


def points_of(rows, column):
    """The lowest of each few samples after the warm-up, less the round's mean."""
    rows = rows[int(WARM_UP * len(rows)) :]
    groups = [rows[at : at + SAMPLES_OF_A_POINT] for at in range(0, len(rows), SAMPLES_OF_A_POINT)]
    points = numpy.array([group[numpy.argmin(group[:, column])][[0, column]] for group in groups])
    return points - points.mean(axis=0)


def growth(rounds, column):
    """In 1,000 ticks, and its standard error."""
    ticks, values = numpy.concatenate([points_of(rows, column) for rows in rounds]).T
    slope = ticks @ values / (ticks @ ticks)
    rest = values - slope * ticks
    error = numpy.sqrt(rest @ rest / max(1, len(ticks) - len(rounds) - 1) / (ticks @ ticks))
    return 1000 * slope, 1000 * error


def verdict(name, rounds, column):
    """Prints it, and returns whether the quantity is flat."""
    slope, error = growth(rounds, column)
    bound, levels = BOUNDS[name], numpy.concatenate(rounds)[:, column]
    word = "flat" if slope + 2 * error <= bound else "grows" if slope > 2 * error else "too few ticks to tell"
    print(f"{name}: {levels.min():.1f} to {levels.max():.1f}, {slope:+.3f} +- {2 * error:.3f} in 1,000 ticks, "
          f"at most {bound}: {word}", flush=True)
    return word == "flat"


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("program")
    parser.add_argument("--ticks", type=int, default=20_000)
    parser.add_argument("--speed", type=float, default=200)
    parser.add_argument("--samples", help="a file to keep the samples in")
    options = parser.parse_args()

    display, server, rounds = Display(640, 360), Service(), []  # small, for many ticks a second
    saver = Soak(display, pathlib.Path(options.program).resolve())
    begin = time.monotonic()
    with contextlib.closing(display), contextlib.closing(saver):
        for name, answer in FAULTS.items():
            server.change(answer)
            asked = server.request_count
            rounds.append(saver.run_round(server, options.ticks // len(FAULTS), options.speed))
            pages = saver.count("page: loaded")
            print(f"{name}: {server.request_count - asked} requests, {rounds[-1][-1][0]:.0f} ticks, {pages} pages, "
                  f"{rounds[-1][:, 1].mean():.0f} MB", flush=True)
    print(f"{sum(rows[-1][0] for rows in rounds):.0f} ticks in {time.monotonic() - begin:.0f} s")
    if options.samples:
        numpy.savetxt(options.samples, numpy.concatenate(rounds), "%.2f")
    if not all([verdict(name, rounds, column) for column, name in enumerate(BOUNDS, 1)]):
        raise SystemExit(1)


if __name__ == "__main__":
    main()
