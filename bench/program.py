#!/usr/bin/env python3
"""Measures the running program with the sample feed on a display of its own: start, pages, fades, idle time and memory.
The start is measured once more with the sample feed as an event service's cached answer.

usage: bench/program.py PROGRAM [--size 1920x1080] [--ticks 200]
       bench/program.py PROGRAM --end 50    only how long the program takes to exit, at that many moments
"""
import argparse
import contextlib
import ctypes
import http.server
import os
import re
import statistics
import subprocess
import tempfile
import threading
import time

SPLASH = (153, 179, 204)  # the splash's background colour
SAMPLE_FEED = os.path.join(os.path.dirname(__file__), "../resources/sample-feed.xml")


class Display:
    """An Xvfb of its own, and the colours of its pixels."""

    def __init__(self, size):
        read, write = os.pipe()
        self.server = subprocess.Popen(
            ["Xvfb", "-displayfd", str(write), "-screen", "0", f"{size}x24"], pass_fds=[write], stderr=subprocess.DEVNULL)
        self.name = ":" + os.read(read, 16).decode().strip()
        self.x11 = ctypes.CDLL("libX11.so.6")
        self.x11.XOpenDisplay.restype = ctypes.c_void_p
        self.x11.XGetImage.restype = ctypes.c_void_p
        self.x11.XGetPixel.restype = ctypes.c_ulong
        self.x11.XDefaultRootWindow.restype = ctypes.c_ulong
        self.connection = ctypes.c_void_p(self.x11.XOpenDisplay(self.name.encode()))
        self.root = ctypes.c_ulong(self.x11.XDefaultRootWindow(self.connection))

    def pixel(self, x, y):
        image = ctypes.c_void_p(
            self.x11.XGetImage(self.connection, self.root, x, y, 1, 1, ctypes.c_ulong(0xFFFFFF), 2))
        value = self.x11.XGetPixel(image, 0, 0)
        self.x11.XDestroyImage(image)
        return value >> 16 & 255, value >> 8 & 255, value & 255

    def close(self):
        self.server.terminate()
        self.server.wait()


class Saver:
    """The program, and the times at which its verbose lines arrived."""

    def __init__(self, program, display, *options, source=("--demo",)):
        environment = dict(os.environ, DISPLAY=display.name)
        environment.pop("WAYLAND_DISPLAY", None)
        self.start = time.monotonic()
        self.process = subprocess.Popen(
            [program, "--verbose", "--fullscreen", *source, *options], env=environment, stderr=subprocess.PIPE, text=True)
        self.lines = []
        threading.Thread(target=self.read, daemon=True).start()

    def read(self):
        for line in self.process.stderr:
            self.lines.append((time.monotonic() - self.start, line))

    def times(self, pattern):
        return [(when, match) for when, line in self.lines if (match := re.search(pattern, line))]

    def wait_for(self, pattern, count):
        while len(self.times(pattern)) < count:
            if self.process.poll() is not None:
                raise SystemExit("the program ended: " + "".join(line for _, line in self.lines))
            time.sleep(0.005)
        return self.times(pattern)[count - 1][0]

    def processes(self):
        """The program and all its descendants."""
        children = {}
        for pid in filter(str.isdigit, os.listdir("/proc")):
            try:
                parent = int(open(f"/proc/{pid}/stat").read().rsplit(")", 1)[1].split()[1])
            except OSError:
                continue
            children.setdefault(parent, []).append(int(pid))
        found = [self.process.pid]
        for pid in found:
            found += children.get(pid, [])
        return found

    def pss(self):
        """Memory of all processes in MB, with each shared page divided among its users."""
        total = 0
        for pid in self.processes():
            with open(f"/proc/{pid}/smaps_rollup") as rollup:
                total += int(re.search(r"^Pss:\s+(\d+)", rollup.read(), re.M)[1])
        return total / 1024

    def processor_seconds(self):
        ticks = 0
        for pid in self.processes():
            fields = open(f"/proc/{pid}/stat").read().rsplit(")", 1)[1].split()
            ticks += int(fields[11]) + int(fields[12])
        return ticks / os.sysconf("SC_CLK_TCK")

    def stop(self):
        start = time.monotonic()
        self.process.terminate()
        self.process.wait()
        return time.monotonic() - start


class Service(http.server.BaseHTTPRequestHandler):
    """An event service that always answers with the sample feed."""

    def do_GET(self):
        self.send_response(200)
        self.end_headers()
        with open(SAMPLE_FEED, "rb") as feed:
            self.wfile.write(feed.read())

    def log_message(self, *_):
        pass


@contextlib.contextmanager
def cached_answer(program):
    """Options for a service whose answer is cached and which can no longer be reached."""
    with tempfile.TemporaryDirectory() as cache, http.server.HTTPServer(("127.0.0.1", 0), Service) as server:
        os.environ["XDG_CACHE_HOME"] = cache
        options = ["--service", f"http://127.0.0.1:{server.server_port}/"]
        asking = subprocess.Popen([program, "--list", *options], stdout=subprocess.PIPE)
        server.handle_request()
        asking.communicate()
        server.server_close()
        yield options
        del os.environ["XDG_CACHE_HOME"]


def measure_start(program, display, source=("--demo",)):
    saver = Saver(program, display, source=source)
    while display.pixel(5, 5) != SPLASH:
        time.sleep(0.002)
    splash = time.monotonic() - saver.start
    pages = saver.wait_for(r"page: loaded", 2)
    time.sleep(0.5)
    return splash, pages, saver.stop()


def measure_idle(program, display):
    saver = Saver(program, display)
    saver.wait_for(r"page: loaded", 2)
    time.sleep(3)
    before = saver.processor_seconds()
    time.sleep(10)
    used = saver.processor_seconds() - before
    saver.stop()
    return used


def measure_fades(program, display):
    saver = Saver(program, display, "--speed", "7")
    saver.wait_for(r"fade:", 9)
    rates = [int(m[2]) / float(m[1]) for _, m in saver.times(r"fade: ([\d.]+) s, (\d+) frames")]
    saver.stop()
    return rates


def measure_memory(program, display, ticks):
    saver = Saver(program, display, "--speed", "60")
    results = []
    for count in (20, ticks):
        saver.wait_for(r"tick", count)
        results.append((count, saver.pss()))
    saver.stop()
    return results


def measure_end(program, display, runs):
    """Milliseconds from SIGTERM to the exit, on the splash, on a map, and in between."""
    times = []
    for run in range(runs):
        saver = Saver(program, display, "--speed", "20")
        saver.wait_for(r"page: loaded", 2)
        time.sleep(3 * run / runs)  # up to the fourth tick
        times.append(1000 * saver.stop())
    return times


def print_starts(title, starts):
    for name, values in zip(("splash painted after", "both pages complete after", "exited after"), zip(*starts)):
        print(f"{title}: {name} median {statistics.median(values):.2f} s, worst {max(values):.2f} s (5 runs)", flush=True)


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("program")
    parser.add_argument("--size", default="1920x1080")
    parser.add_argument("--ticks", type=int, default=200)
    parser.add_argument("--end", type=int, default=0)
    options = parser.parse_args()

    display = Display(options.size)
    if options.end:
        times = measure_end(options.program, display, options.end)
        print(f"exit: median {statistics.median(times):.0f} ms, worst {max(times):.0f} ms ({len(times)} runs)")
        return display.close()
    print_starts("sample feed", [measure_start(options.program, display) for _ in range(6)][1:])
    with cached_answer(options.program) as source:
        print_starts("cached answer", [measure_start(options.program, display, source) for _ in range(6)][1:])
    print(f"idle: {measure_idle(options.program, display):.2f} s of processor time in 10 s", flush=True)
    rates = measure_fades(options.program, display)
    print(f"fades: median {statistics.median(rates):.0f} frames a second, worst {min(rates):.0f}", flush=True)
    for ticks, megabytes in measure_memory(options.program, display, options.ticks):
        print(f"memory after {ticks} ticks: {megabytes:.0f} MB (PSS of all processes)", flush=True)
    display.close()


if __name__ == "__main__":
    main()
