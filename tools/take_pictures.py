#!/usr/bin/python3
"""Runs the built program under Xvfb with the options given and writes pictures of its window: out/splash.png,
out/quake-1.png, out/quake-2.png and out/preview.png. Fails when one that is due is missing."""
import contextlib
import os
import pathlib
import signal
import sys
import time

sys.dont_write_bytecode = True
ROOT = pathlib.Path(__file__).resolve().parent.parent
sys.path.insert(0, str(ROOT / "tests"))

from harness.display import Display  # noqa: E402 found in the path from above
from harness.processes import wait_until  # noqa: E402
from harness.program import Program  # noqa: E402

SPEED = "4"  # a quake stays for 15 / 4 seconds


def expect(program, question, patience, complaint):
    """Waits for a true answer while the program runs, and returns it. Gives up with the complaint."""
    with contextlib.suppress(TimeoutError):
        answer = wait_until(lambda: question() or not program.is_running(), patience)
        if program.is_running():
            return answer
    sys.stderr.write(program.log())
    sys.exit(complaint)


def has_traced(program, word, count=1):
    return program.count(f"tellmar: {word}") >= count


@contextlib.contextmanager
def running(display, *arguments):
    """The program as it is for the user who asks for pictures, and its window."""
    with contextlib.closing(Program(display, ROOT / "build/release/tellmar")) as program:
        program.current_folder = ROOT
        program.environment = {**os.environ, "DISPLAY": display.name, "GDK_BACKEND": "x11", "NO_AT_BRIDGE": "1"}
        program.start(*arguments, "--speed", SPEED, "--verbose")
        # The feed is read before the window opens, and a slow server has half a minute.
        complaint = "The program has shown no window."
        window = expect(program, lambda: display.window_with_title("Tellmar"), 60, complaint)
        yield program, window


def take_picture(display, window, name):
    display.picture(display.area_of(window)).save(ROOT / f"out/{name}.png")
    print(f"out/{name}.png", flush=True)


def take_saver(display, arguments):
    with running(display, *arguments) as (program, window):
        # The splash stays for two ticks at least; at the first one it is painted.
        expect(program, lambda: has_traced(program, "tick"), 45, "The splash has not come to the screen.")
        take_picture(display, window, "splash")
        if has_quakes(program):
            take_quakes(display, program, window)
        else:
            note = "The feed has given no earthquakes, so the splash stays: no pictures of quakes. Try ./run --demo"
            print(note, file=sys.stderr)


def has_quakes(program):
    with contextlib.suppress(TimeoutError):
        return wait_until(lambda: has_traced(program, "page") or not program.is_running(), 15)


def take_quakes(display, program, window):
    for quake in 1, 2:
        complaint = f"Quake {quake} has not come to the screen."
        expect(program, lambda: has_traced(program, "fade", quake), 45, complaint)
        time.sleep(1.5)  # the map's own entrance
        take_picture(display, window, f"quake-{quake}")


def take_preview(display, arguments):
    with running(display, *arguments, "--preview") as (program, window):
        # The first tick paints it.
        expect(program, lambda: has_traced(program, "tick", 2), 30, "The preview has not been painted.")
        take_picture(display, window, "preview")


def main():
    signal.signal(signal.SIGTERM, lambda *_: sys.exit(1))  # so that everything it started ends too
    (ROOT / "out").mkdir(exist_ok=True)
    for name in "splash", "quake-1", "quake-2", "preview":
        (ROOT / f"out/{name}.png").unlink(missing_ok=True)
    with contextlib.closing(Display()) as display:
        take_saver(display, sys.argv[1:])
        take_preview(display, sys.argv[1:])


if __name__ == "__main__":
    main()
