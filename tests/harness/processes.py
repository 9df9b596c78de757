"""Processes that a test or a measurement starts."""
import contextlib

import psutil

from harness.waiting import PATIENCE

# Put before a command: whatever becomes of this process, that one does not outlive it.
ENDING_WITH_US = ["setpriv", "--pdeathsig", "KILL", "--"]


def descendants(process, name=""):
    """The living processes that it started, directly or not, and that run the program of this name."""
    found = []
    for each in process.children(recursive=True):
        with contextlib.suppress(psutil.NoSuchProcess):
            if each.status() != psutil.STATUS_ZOMBIE and name in ("", each.name()):
                found.append(each)
    return found


def family_of(process):
    return [process, *descendants(process)]


def are_gone(processes):
    """Waits for the end of all of them."""
    return not psutil.wait_procs(processes, PATIENCE)[1]


def end_at_once(processes):
    for each in processes:
        with contextlib.suppress(psutil.NoSuchProcess):
            each.kill()
