"""The program, run as a user or a host runs it."""
import os
import pathlib
import shutil
import signal
import subprocess
import tempfile

import psutil

from harness.processes import ENDING_WITH_US, PATIENCE, descendants, kill, wait_until

ROOT = pathlib.Path(__file__).resolve().parents[2]
PROGRAM = pathlib.Path(os.environ.get("TELLMAR_PROGRAM", ROOT / "build/dev/tellmar"))
SAMPLE_FEED = (ROOT / "resources/sample-feed.xml").read_text()


def copy_program(folder, lacking):
    """Copies the program to a folder, beside a bundle that lacks a file."""
    shutil.copy(PROGRAM, folder)
    shutil.copytree(PROGRAM.parent / "Tellmar.saver/resources", folder / "Tellmar.saver/resources")
    (folder / "Tellmar.saver/resources" / lacking).unlink()
    return folder / "tellmar"


class Program:
    """One process with home, settings and temporary files in a new folder. What start uses may be changed before."""

    def __init__(self, display=None, executable=PROGRAM):
        self._folder = tempfile.TemporaryDirectory()
        self.path = self.current_folder = pathlib.Path(self._folder.name)
        for name in "home", "settings", "temporary":
            (self.path / name).mkdir()
        self.executable = executable
        self.environment = {
            "PATH": "/usr/local/bin:/usr/bin:/bin",
            "LANG": "C.UTF-8",
            "TZ": "UTC",
            "NO_AT_BRIDGE": "1",
            "HOME": f"{self.path}/home",
            "XDG_CONFIG_HOME": f"{self.path}/settings",
            "XDG_RUNTIME_DIR": f"{self.path}/temporary",
            "TMPDIR": f"{self.path}/temporary",
        }
        if display:
            self.environment["DISPLAY"] = display.name
        self.process = None

    def start(self, *arguments):
        with open(self.path / "stdout", "wb") as output, open(self.path / "stderr", "wb") as errors:
            streams = {"stdin": subprocess.DEVNULL, "stdout": output, "stderr": errors}
            command = [*ENDING_WITH_US, str(self.executable), *arguments]
            self.process = psutil.Popen(command, cwd=self.current_folder, env=self.environment, **streams)

    def run(self, *arguments):
        """Runs it to its end and returns its status."""
        self.start(*arguments)
        return self.status()

    def status(self, patience=PATIENCE):
        """Waits for its end; below zero when a signal ended it."""
        return self.process.wait(patience)

    def is_running(self):
        return self.process is not None and self.process.poll() is None

    def end(self, number=signal.SIGTERM, patience=PATIENCE):
        """Ends it and returns its status."""
        self.process.send_signal(number)
        return self.status(patience)

    def close(self):
        if self.is_running():
            family = [*descendants(self.process), self.process]
            self.process.terminate()  # so that it can tidy up
            psutil.wait_procs([self.process], PATIENCE)
            kill(family)
            self.process.wait()
        self._folder.cleanup()

    def output(self):
        return (self.path / "stdout").read_text()

    def log(self):
        """What it wrote on stderr."""
        return (self.path / "stderr").read_text()

    def count(self, text):
        """How many lines on stderr hold the text."""
        return sum(text in line for line in self.log().splitlines())

    def wait_for(self, text, count=1):
        """Waits for so many lines on stderr that hold the text."""
        wait_until(lambda: self.count(text) >= count or not self.is_running())
        if self.count(text) < count:
            raise EOFError(f"the program ended with status {self.status()} before it wrote '{text}'")

    def remains(self):
        """What it keeps among temporary files."""
        return list(self.path.glob("temporary/tellmar-*"))
