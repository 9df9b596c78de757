"""Processes, and waiting for what they do."""
import contextlib
import time

import psutil

PATIENCE = 40  # seconds; what takes longer, however busy the machine, never comes
# Put before a command: whatever becomes of this process, that one does not outlive it.
ENDING_WITH_US = ["setpriv", "--pdeathsig", "KILL", "--"]


def wait_until(question, patience=PATIENCE):
    """Asks again and again until the answer is true, and returns it."""
    end = time.monotonic() + patience
    while not (answer := question()):
        if time.monotonic() > end:
            raise TimeoutError(f"still {answer!r} after {patience} seconds")
        time.sleep(0.01)
    return answer


def descendants(process, name=""):
    """The living processes that it started, directly or not, and that run the program of this name."""
    found = []
    for each in process.children(recursive=True):
        with contextlib.suppress(psutil.NoSuchProcess):
            if each.status() != psutil.STATUS_ZOMBIE and name in ("", each.name()):
                found.append(each)
    return found


def kill(processes):
    for each in processes:
        with contextlib.suppress(psutil.NoSuchProcess):
            each.kill()


def wait_for_end(processes):
    assert not psutil.wait_procs(processes, PATIENCE)[1]
