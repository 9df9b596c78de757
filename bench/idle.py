#!/usr/bin/python3
"""Measures the waiter on the real desktops, each with two monitors: its memory and wake-ups while it waits, and the time
from a key until the windows are gone and until the saver's last process is; with maps on the screen, and at the splash,
when all processes are still starting.

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
from harness.sights import is_splash, shows, shows_map  # noqa: E402

PATIENCE = 120  # seconds


def shows_splash(display, area):
    return shows(display, is_splash, area)


def middles(display):
    areas = [(left + width // 2, top + height // 2, 1, 1) for left, top, width, height in desktops.MONITORS]
    return [display.picture(area).getpixel((0, 0)) for area in areas]


def wake_ups(process):
    status = pathlib.Path(f"/proc/{process.pid}/status").read_text()
    return sum(int(count) for count in re.findall(r"voluntary_ctxt_switches:\s+(\d+)", status))


def start_waiter(desktop, minutes):
    root = desktop.start_and_stay(f"{desktops.PROGRAM}-idle {minutes} --demo --speed 3")
    return wait_until(lambda: descendants(root, "tellmar-idle"))[0]


def measure_waiting(desktop):
    waiter = start_waiter(desktop, 30)
    time.sleep(2)
    before = wake_ups(waiter)
    time.sleep(options.seconds)
    count = wake_ups(waiter) - before
    print(f"  waiting: PSS {waiter.memory_full_info().pss / 2**20:.2f} MB, {count} wake-ups in {options.seconds:g} s")


def milliseconds_to_the_end(desktop):
    """From a key until both monitors show something else, and until the saver's last process has ended, the web engine's
    included."""
    first = desktop.wait_for_savers(1 + len(desktops.MONITORS))[0]
    family = {os.pidfd_open(each.pid) for each in [first, *first.children(recursive=True)]}
    before = middles(desktop.display)
    gone = None
    begin = time.monotonic()
    passed = lambda: 1000 * (time.monotonic() - begin)
    desktop.display.press("a")
    while family or gone is None:
        for descriptor in select.select([*family], [], [], 0.002)[0]:
            family.remove(descriptor)
            os.close(descriptor)
            end = passed()
        if gone is None and all(now != then for now, then in zip(middles(desktop.display), before)):
            gone = passed()
    return gone, end


def measure_ends(desktop, title, condition):
    times = []
    for _ in range(options.rounds):
        for monitor in desktops.MONITORS:
            wait_until(lambda area=monitor: condition(desktop.display, area), PATIENCE)
        times.append(milliseconds_to_the_end(desktop))
    for what, values in zip(("windows gone", "all ended"), zip(*times)):
        print(f"  key at {title}, {what}: median {statistics.median(values):.0f} ms, worst {max(values):.0f} ms", flush=True)


def make(kind, *parameters):
    return kind(*parameters)


for name in options.desktops:
    kind = getattr(desktops, name)
    display = kind.display_of(make)
    session = kind(display)
    try:
        print(name, f"load {psutil.getloadavg()[0]:.0f}", flush=True)
        measure_waiting(session)
        start_waiter(session, desktops.IDLE_SECONDS / 60)
        measure_ends(session, "maps", shows_map)
        measure_ends(session, "the splash", shows_splash)
    finally:
        session.close()
        display.close()
