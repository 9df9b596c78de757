#!/usr/bin/python3
"""Checks who includes whom. Prints each line that breaks a rule, or else the order as it is in the sources.

usage: tools/check_includes.py [FOLDER]    the sources' root; by default this repository's
"""

import collections
import pathlib
import re
import sys

SOURCES = pathlib.Path(__file__).resolve().parent.parent
CONTRACTS = ["platform/portable", "platform"]

# Each room, from the bottom up, and the rooms that it may include beside itself. Arrows go down this list only.
ROOMS = {
    "platform/portable": [],
    "platform": ["platform/portable"],
    "platform/linux": [],
    "platform/linux/system": ["platform/linux", *CONTRACTS],
    "platform/linux/desktop": ["platform/linux", *CONTRACTS],
    "support": CONTRACTS,
    "service": ["support", *CONTRACTS],
    "xml": ["support", *CONTRACTS],
    "quakes": ["xml", "support", *CONTRACTS],
    "mappages": ["quakes", "support", *CONTRACTS],
    "saver": ["mappages", "support", *CONTRACTS],
}
ROOMS["program"] = list(ROOMS)
ROOMS["packaging"] = ["program"]
TESTING = ["tests", "bench"]  # may include everything
WITH_TOOLKIT = ["platform/linux", "program", *TESTING]
TOOLKIT = re.compile(
    r"(gtk|gdk|gio|glib|glib-object|gobject|webkit2|jsc|libsoup|curl|X11|cairo|pango)(/|\.h$|-)|(expat|iconv)\.h$"
)
INCLUDE = re.compile(r'^\s*#\s*include\s*([<"])([^>"]+)[>"]')


def room_of(path):
    """The innermost room that the path lies in; the first folder of a path outside of all rooms."""
    inside = [room for room in [*ROOMS, *TESTING] if path.startswith(room + "/")]
    return max(inside, key=len, default=path.split("/")[0])


def fault(root, path, bracket, header):
    """What is wrong with an include in the file at that path, or None."""
    here = room_of(path)
    if TOOLKIT.match(header):
        has_toolkit = any(f"{here}/".startswith(f"{room}/") for room in WITH_TOOLKIT)
        return None if has_toolkit else "toolkit header outside platform/linux/ and program/"
    if bracket == "<" or here in TESTING:
        return None
    if not (root / header).is_file():
        return "no such header from the sources' root"
    target = room_of(header)
    return None if target == here or target in ROOMS.get(here, []) else f"{here}/ does not include {target}/"


def includes(root):
    """Each (path, line number, bracket, header) of the sources."""
    for top in sorted({room.split("/")[0] for room in [*ROOMS, *TESTING]}):
        for path in sorted((root / top).rglob("*")):
            if path.suffix in (".h", ".cpp"):
                for number, line in enumerate(path.read_text(encoding="utf-8").splitlines(), start=1):
                    if match := INCLUDE.match(line):
                        yield path.relative_to(root).as_posix(), number, *match.groups()


def print_order(found):
    arrows = collections.defaultdict(collections.Counter)
    for path, _, bracket, header in found:
        if bracket == '"' and room_of(header) != room_of(path):
            arrows[room_of(path)][room_of(header)] += 1
    for room in reversed(ROOMS):
        targets = [f"{target} {arrows[room][target]}" for target in reversed(ROOMS) if arrows[room][target]]
        print(f"{room:23} -> {', '.join(targets) or '-'}")


def main():
    root = pathlib.Path(sys.argv[1]) if len(sys.argv) > 1 else SOURCES
    found = list(includes(root))
    wrong = [(path, number, header, fault(root, path, bracket, header)) for path, number, bracket, header in found]
    faults = [f"{path}:{number}: {header}: {what}" for path, number, header, what in wrong if what]
    if faults:
        print("\n".join(faults))
        return 1
    print_order(found)
    return 0


if __name__ == "__main__":
    sys.exit(main())
