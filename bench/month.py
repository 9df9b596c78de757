#!/usr/bin/python3
"""Runs --kiosk on two monitors through thirty days in a few minutes: an answer that changes daily, the network off for two
days, and a monitor that comes and goes. Fails when the first process or all of them grow, when a monitor has more than two
processes or two for longer than a minute, or when the first monitor shows black or the splash after its first map.

usage: bench/month.py PROGRAM [--days 30] [--speed 60]
"""
import argparse
import collections
import contextlib
import pathlib
import sys
import threading
import time

import psutil

sys.dont_write_bytecode = True
sys.path.insert(0, str(pathlib.Path(__file__).resolve().parent.parent / "tests"))

from harness.display import MonitorDisplay  # noqa: E402 found in the path from above
from harness.processes import wait_until  # noqa: E402
from harness.program import SAMPLE_FEED, Program  # noqa: E402
from harness.server import Server  # noqa: E402
from harness.sights import is_black, is_map, is_splash, picture, wait_to_see  # noqa: E402

DAYS_OFF = 12, 13
DAYS_WITH_ONE_MONITOR = 5, 6, 17, 25
FIRST_AREA = (0, 0, 1280, 720)
MIDDLE = (640, 360, 100, 100)
PATIENCE = 300  # seconds
MAX_GROWTH = {"descriptors": 0, "processes": 0, "own memory": 2, "memory of all": 60}  # the last in MB; WebKit's collector


class Watcher(threading.Thread):
    """Looks at the processes of each monitor and at the first monitor's picture, all the time."""

    def __init__(self, kiosk, display):
        super().__init__(daemon=True)
        self._kiosk, self._display = kiosk, display
        self._double_since, self.longest_double, self.most_processes = {}, 0, 0
        self.frames = self.bad_frames = 0
        self.is_over = False

    def run(self):
        while not self.is_over:
            self._look_at_processes()
            pixels = picture(self._display, MIDDLE)
            self.frames += 1
            self.bad_frames += bool(is_splash(pixels).any() or is_black(pixels).mean() > 0.5)
            time.sleep(0.02)

    def _look_at_processes(self):
        counts = collections.Counter(monitor for _, monitor in self._kiosk.covers())
        self.most_processes = max(self.most_processes, *counts.values(), 0)
        for monitor in set(self._double_since) | set(counts):
            if counts[monitor] < 2:
                begin = self._double_since.pop(monitor, None)
                self.longest_double = max(self.longest_double, time.monotonic() - begin if begin else 0)
            else:
                self._double_since.setdefault(monitor, time.monotonic())


class Kiosk(Program):
    def __init__(self, *parameters):
        super().__init__(*parameters)
        self._tasks = {}  # by process, such as "successor 0 of 2"

    def covers(self):
        """The processes on the screens, each with its monitor's number."""
        found = []
        for each in self.process.children():
            with contextlib.suppress(psutil.Error):
                if each not in self._tasks:
                    self._tasks[each] = each.environ().get("TELLMAR_TASK", "")
                task = self._tasks[each].split()
                if len(task) > 1 and each.status() != psutil.STATUS_ZOMBIE:
                    found.append((each, task[1]))
        return found

    def settle(self, count, old=()):
        """Waits until so many processes, and none of the old ones, are on the screens. Returns them."""

        def has_settled():
            now = {each for each, _ in self.covers()}
            return len(now) == count and not now & set(old) and now

        return wait_until(has_settled, PATIENCE)

    def sample(self):
        family = [self.process, *self.process.children(recursive=True)]
        descriptors = self.process.num_fds()
        memory = [each.memory_full_info() for each in family]
        return {
            "own memory": memory[0].uss / 2**20,
            "memory of all": sum(each.pss for each in memory) / 2**20,
            "descriptors": descriptors,
            "processes": len(family),
        }


def feed_of(day):
    return SAMPLE_FEED.replace("<value>5.", f"<value>{5 + day % 2}.")


def live_through(day, kiosk, display, server, old):
    """Returns the processes on the screens at the day's end."""
    count = 1 if day in DAYS_WITH_ONE_MONITOR else 2
    if day in DAYS_OFF:
        server.serve("no luck", 503)
        requests = server.request_count
        wait_until(lambda: server.request_count > requests, PATIENCE)
        return old
    server.serve(feed_of(day))
    if count < len(old):
        display.remove_monitor(1)
    elif count > len(old):
        display.set_monitor(1, 1280, "1024x768")
    return kiosk.settle(count, old)


def settled_sample(kiosk):
    """The one with the fewest processes of several: for a moment others ask for quakes, or are still ending."""
    samples = []
    for _ in range(10):
        time.sleep(0.3)
        with contextlib.suppress(psutil.Error):
            samples.append(kiosk.sample())
    return min(samples, key=lambda each: (each["processes"], each["descriptors"]))


def live(days, kiosk, display, server, speed):
    server.serve(feed_of(0))
    display.set_monitor(1, 1280, "1024x768")
    kiosk.start("--kiosk", "--service", server.url, "--no-cache", "--speed", str(speed))
    covers = kiosk.settle(2)
    wait_to_see(is_map, display, FIRST_AREA)
    watcher = Watcher(kiosk, display)
    watcher.start()
    samples = []
    for day in range(1, days + 1):
        covers = live_through(day, kiosk, display, server, covers)
        samples.append(settled_sample(kiosk))
        print(f"day {day}: {len(covers)} monitors,", ", ".join(f"{name} {value:.0f}" for name, value in samples[-1].items()),
              flush=True)
    watcher.is_over = True
    watcher.join()
    return samples, watcher


def faults(samples, watcher, kiosk, status):
    first, last = samples[0], samples[-1]
    found = [f"{name} grew from {first[name]:.1f} to {last[name]:.1f}" for name, most in MAX_GROWTH.items()
             if last[name] - first[name] > most]
    found += ["more than two processes on a monitor"] * (watcher.most_processes > 2)
    found += ["two processes for more than a minute"] * (watcher.longest_double > 60)
    found += [f"{watcher.bad_frames} frames black or with the splash"] * (watcher.bad_frames > 0)
    return found + [f"status {status}, left {kiosk.remains()}"] * bool(status or kiosk.remains())


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("program")
    parser.add_argument("--days", type=int, default=30)
    parser.add_argument("--speed", type=float, default=60)
    options = parser.parse_args()

    display, server = MonitorDisplay(), Server()
    kiosk = Kiosk(display, pathlib.Path(options.program).resolve())
    begin = time.monotonic()
    with contextlib.closing(display), contextlib.closing(server), contextlib.closing(kiosk):
        samples, watcher = live(options.days, kiosk, display, server, options.speed)
        found = faults(samples, watcher, kiosk, kiosk.end())
    print(f"{options.days} days in {time.monotonic() - begin:.0f} s, {watcher.frames} looks at the first monitor; at most "
          f"{watcher.most_processes} processes on a monitor, two for {watcher.longest_double:.1f} s at most")
    if found:
        raise SystemExit("; ".join(found))


if __name__ == "__main__":
    main()
