#!/usr/bin/python3
"""Measures the program against an event service on this machine: the memory for a big answer, and the number of
requests from processes that start together.

usage: bench/service.py PROGRAM [--megabytes 60] [--event-bytes 460000] [--processes 4]
"""
import argparse
import contextlib
import os
import pathlib
import subprocess
import sys
import tempfile
import time

sys.dont_write_bytecode = True
sys.path.insert(0, str(pathlib.Path(__file__).resolve().parent.parent / "tests"))

from harness.server import Server  # noqa: E402 found in the path from above

HEAD = (
    b'<?xml version="1.0" encoding="UTF-8"?>\n<q:quakeml xmlns:q="http://quakeml.org/xmlns/quakeml/1.2"'
    b' xmlns="http://quakeml.org/xmlns/bed/1.2"><eventParameters publicID="smi:example/NA">'
)
TAIL = b"</eventParameters></q:quakeml>"
PICK = (
    b'<pick publicID="smi:example/pick"><time><value>2026-11-20T08:24:12.1Z</value></time><waveformID networkCode="NZ"'
    b' stationCode="ARAZ" locationCode="10" channelCode="EHZ"/><methodID>smi:example/AIC</methodID><phaseHint>P'
    b"</phaseHint><evaluationMode>automatic</evaluationMode></pick>"
)
QUAKE = (
    b'<origin publicID="smi:example/origin"><time><value>2026-11-20T08:24:02.123456Z</value></time><latitude><value>-42.7'
    b"</value></latitude><longitude><value>173.0</value></longitude><depth><value>15000</value></depth></origin>"
    b'<magnitude publicID="smi:example/magnitude"><mag><value>5.5</value></mag></magnitude><type>earthquake</type>'
)


def service(size, event_bytes):
    """A server that answers with that many bytes, and holds only one event of them."""
    events = max(1, size // event_bytes)
    event = b"<event>" + PICK * (min(size, event_bytes) // len(PICK)) + QUAKE + b"</event>"

    def answer(handler):
        handler.send(HEAD, length=len(HEAD) + len(event) * events + len(TAIL))
        for _ in range(events):
            handler.wfile.write(event)
        handler.wfile.write(TAIL)

    server = Server()
    server.answer = answer
    return contextlib.closing(server)


def start(program, server, cache):
    environment = {"PATH": "/usr/bin:/bin", "no_proxy": "*", "XDG_CACHE_HOME": cache}
    return subprocess.Popen([program, "--list", "--service", server.url], env=environment, stdout=subprocess.PIPE)


def peak(program, size, event_bytes):
    """Peak memory in KiB, and seconds from start to exit, of one process that reads an answer of that size."""
    with service(size, event_bytes) as server, tempfile.TemporaryDirectory() as cache:
        begin = time.monotonic()
        process = start(program, server, cache)
        listed = process.stdout.read()
        _, status, usage = os.wait4(process.pid, 0)
        process.returncode = status
    if status != 0 or b"5.50" not in listed:
        raise SystemExit("the program did not list the earthquakes")
    return usage.ru_maxrss, time.monotonic() - begin


def requests(program, count, event_bytes):
    with service(event_bytes, event_bytes) as server, tempfile.TemporaryDirectory() as cache:
        processes = [start(program, server, cache) for _ in range(count)]
        for process in processes:
            if b"5.50" not in process.communicate()[0]:
                raise SystemExit("a process did not list the earthquake")
        return server.request_count


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("program")
    parser.add_argument("--megabytes", type=int, default=60)
    parser.add_argument("--event-bytes", type=int, default=460_000, help="GeoNet's biggest events have about this size")
    parser.add_argument("--processes", type=int, default=4)
    options = parser.parse_args()
    small, _ = peak(options.program, 0, options.event_bytes)
    big, seconds = peak(options.program, options.megabytes * 1_000_000, options.event_bytes)
    print(f"peak memory: {small / 1024:.1f} MiB for one event without picks, {big / 1024:.1f} MiB for "
          f"{options.megabytes} MB ({(big - small) / 1024:.1f} MiB above), read and listed in {seconds:.2f} s")
    count = requests(options.program, options.processes, options.event_bytes)
    print(f"{options.processes} processes started together: {count} request(s)")


if __name__ == "__main__":
    main()
