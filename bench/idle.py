#!/usr/bin/python3
"""Measures the waiter on the real desktops, each with two monitors: its memory and wake-ups while it waits, and the time
from a key to the end of the saver's last process.

usage: bench/idle.py PROGRAM [--seconds 60] [--rounds 20] [--desktops GnomeShell KWin Openbox]
"""
import argparse
import os
import pathlib
import re
import select
import statistics
import sys
import time

import psutil

sys.dont_write_bytecode = True
sys.path.insert(0, str(pathlib.Path(__file__).resolve().parent.parent / "tests"))


def arguments():
    parser = argparse.ArgumentParser()
    parser.add_argument("program")
    parser.add_argument("--seconds", type=float, default=60)
    parser.add_argument("--rounds", type=int, default=20)
    parser.add_argument("--desktops", nargs="+", default=["GnomeShell", "KWin", "Openbox"])
    return parser.parse_args()


options = arguments()
os.environ["TELLMAR_PROGRAM"] = os.path.abspath(options.program)

from harness import desktops  # noqa: E402 found in the path from above
from harness.processes import descendants, wait_until  # noqa: E402
from harness.sights import is_map, is_splash, shows  # noqa: E402

PATIENCE = 120  # seconds


def is_covered(pixels):
    return is_splash(pixels) | is_map(pixels)


def wait_until_covered(desktop):
    for monitor in desktops.MONITORS:
        wait_until(lambda area=monitor: shows(desktop.display, is_covered, area), PATIENCE)


def wake_ups(process):
    status = pathlib.Path(f"/proc/{process.pid}/status").read_text()
    return sum(int(count) for count in re.findall(r"voluntary_ctxt_switches:\s+(\d+)", status))


def start_waiter(desktop, minutes):
    root = desktop.start_and_stay(f"{desktops.PROGRAM}-idle {minutes} --demo")
    return wait_until(lambda: descendants(root, "tellmar-idle"))[0]


def measure_waiting(desktop):
    waiter = start_waiter(desktop, 30)
    time.sleep(2)
    before = wake_ups(waiter)
    time.sleep(options.seconds)
    count = wake_ups(waiter) - before
    print(f"  waiting: PSS {waiter.memory_full_info().pss / 2**20:.2f} MB, {count} wake-ups in {options.seconds:g} s")


def seconds_to_the_end(desktop):
    """From a key to the end of the last process of the saver, the web engine's included."""
    first = desktop.wait_for_savers(1 + len(desktops.MONITORS))[0]
    family = [os.pidfd_open(each.pid) for each in [first, *first.children(recursive=True)]]
    begin = time.monotonic()
    desktop.display.press("a")
    for descriptor in family:
        select.select([descriptor], [], [])
        os.close(descriptor)
    return time.monotonic() - begin


def measure_ends(desktop):
    start_waiter(desktop, desktops.IDLE_SECONDS / 60)
    times = []
    for _ in range(options.rounds):
        wait_until_covered(desktop)
        times.append(seconds_to_the_end(desktop))
    milliseconds = [1000 * each for each in times]
    print(f"  key to end: median {statistics.median(milliseconds):.0f} ms, worst {max(milliseconds):.0f} ms")


def make(kind, *parameters):
    return kind(*parameters)


for name in options.desktops:
    kind = getattr(desktops, name)
    display = kind.display_of(make)
    session = kind(display)
    try:
        print(name, f"load {psutil.getloadavg()[0]:.0f}", flush=True)
        measure_waiting(session)
        measure_ends(session)
    finally:
        session.close()
        display.close()
