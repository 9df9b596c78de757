#!/usr/bin/python3
"""Measures the running program with the sample feed on a display of its own: start, pages, fades, idle time and memory.
The start is measured once more with the sample feed as an event service's cached answer.

usage: bench/program.py PROGRAM [--size 1920x1080] [--ticks 200]
       bench/program.py PROGRAM --end 50    only how long the program takes to exit, at that many moments
       bench/program.py PROGRAM --tick-cost 8    only the frames and the processor time of that many ticks
"""
import argparse
import contextlib
import pathlib
import re
import statistics
import sys
import time

import psutil

sys.dont_write_bytecode = True
sys.path.insert(0, str(pathlib.Path(__file__).resolve().parent.parent / "tests"))

from harness.display import Display  # noqa: E402 found in the path from above
from harness.processes import descendants, wait_until  # noqa: E402
from harness.program import SAMPLE_FEED, Program  # noqa: E402
from harness.server import Server  # noqa: E402

SPLASH = (153, 179, 204)  # the splash's background colour


class Saver(Program):
    """The program, and what it uses."""

    def show(self, *options, source=("--demo",)):
        self.begin = time.monotonic()
        self.start("--verbose", "--fullscreen", *source, *options)

    def seconds(self):
        return time.monotonic() - self.begin

    def family(self):
        return [self.process, *descendants(self.process)]

    def pss(self):
        """Memory of all processes in MB, with each shared page divided among its users."""
        return sum(each.memory_full_info().pss for each in self.family()) / 2**20

    def processor_seconds(self):
        return sum(sum(each.cpu_times()[:2]) for each in self.family())

    def stop(self):
        """Returns how many seconds the program takes to exit."""
        begin = time.monotonic()
        self.end()
        return time.monotonic() - begin


def measure_start(saver, display, source=("--demo",)):
    saver.show(source=source)
    wait_until(lambda: display.picture((5, 5, 1, 1)).getpixel((0, 0)) == SPLASH)
    splash = saver.seconds()
    saver.wait_for("page: loaded", 2)
    pages = saver.seconds()
    time.sleep(0.5)
    return splash, pages, saver.stop()


def measure_idle(saver):
    saver.show()
    saver.wait_for("page: loaded", 2)
    time.sleep(3)
    before = saver.processor_seconds()
    time.sleep(10)
    used = saver.processor_seconds() - before
    saver.stop()
    return used


def measure_fades(saver):
    saver.show("--speed", "7")
    saver.wait_for("fade:", 9)
    rates = [int(frames) / float(seconds) for seconds, frames in re.findall(r"fade: ([\d.]+) s, (\d+)", saver.log())]
    saver.stop()
    return rates


def measure_ticks(saver, display, count):
    """For each tick of six seconds the frames of its fade, and the processor time of all processes and the X server: of
    the fade, and of the next page with all that follows up to the next tick."""
    server = psutil.Process(display.server.pid)

    def used():
        return saver.processor_seconds() + sum(server.cpu_times()[:2])

    def used_at(line, number):
        saver.wait_for(line, number)
        return used()

    saver.show("--speed", "2.5")
    saver.wait_for("fade: ")  # the first one is longer
    first = saver.count("tick ") + 1
    starts, ends = [], []
    for number in range(count + 1):
        starts.append(used_at("tick ", first + number))
        ends.append(used_at("fade: ", 2 + number))
    frames = [int(number) for number in re.findall(r"fade: 0.50 s, (\d+)", saver.log())]
    saver.stop()
    fades = [end - start for start, end in zip(starts, ends)]
    pages = [start - end for end, start in zip(ends, starts[1:])]
    return [*zip(frames, fades, pages)]


def measure_memory(saver, ticks):
    saver.show("--speed", "60")
    results = []
    for count in (20, ticks):
        wait_until(lambda: saver.count("tick") >= count, patience=600)
        results.append((count, saver.pss()))
    saver.stop()
    return results


def measure_end(saver, runs):
    """Milliseconds from SIGTERM to the exit, on the splash, on a map, and in between."""
    times = []
    for run in range(runs):
        saver.show("--speed", "20")
        saver.wait_for("page: loaded", 2)
        time.sleep(3 * run / runs)  # up to the fourth tick
        times.append(1000 * saver.stop())
    return times


def cache_answer(saver):
    """Returns options for a service whose answer is cached and which can no longer be reached."""
    with contextlib.closing(Server(SAMPLE_FEED)) as server:
        options = "--service", server.url
        saver.run("--list", *options)
    return options


def print_starts(title, starts):
    for name, values in zip(("splash painted after", "both pages complete after", "exited after"), zip(*starts)):
        median = statistics.median(values)
        print(f"{title}: {name} median {median:.2f} s, worst {max(values):.2f} s ({len(values)} runs)", flush=True)


def print_ticks(ticks):
    for title, values in zip(("frames in a fade", "seconds for a fade", "seconds for a page"), zip(*ticks)):
        print(f"{title}: median {statistics.median(values):.2f}, {min(values):.2f} to {max(values):.2f}", flush=True)
    mean = statistics.mean(fade + page for _, fade, page in ticks)
    print(f"seconds for a tick: mean {mean:.2f} ({len(ticks)} ticks)")


def print_exits(times):
    print(f"exit: median {statistics.median(times):.0f} ms, worst {max(times):.0f} ms ({len(times)} runs)")


def print_everything(saver, display, ticks):
    print_starts("sample feed", [measure_start(saver, display) for _ in range(6)][1:])
    cached = cache_answer(saver)
    print_starts("cached answer", [measure_start(saver, display, cached) for _ in range(6)][1:])
    print(f"idle: {measure_idle(saver):.2f} s of processor time in 10 s", flush=True)
    rates = measure_fades(saver)
    print(f"fades: median {statistics.median(rates):.0f} frames a second, worst {min(rates):.0f}", flush=True)
    for count, megabytes in measure_memory(saver, ticks):
        print(f"memory after {count} ticks: {megabytes:.0f} MB (PSS of all processes)", flush=True)


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("program")
    parser.add_argument("--size", default="1920x1080")
    parser.add_argument("--ticks", type=int, default=200)
    parser.add_argument("--end", type=int, default=0)
    parser.add_argument("--tick-cost", type=int, default=0)
    options = parser.parse_args()

    display = Display(*map(int, options.size.split("x")))
    saver = Saver(display, pathlib.Path(options.program).resolve())
    with contextlib.closing(display), contextlib.closing(saver):
        if options.end:
            print_exits(measure_end(saver, options.end))
        elif options.tick_cost:
            print_ticks(measure_ticks(saver, display, options.tick_cost))
        else:
            print_everything(saver, display, options.ticks)


if __name__ == "__main__":
    main()
