#!/usr/bin/python3
"""Checks who may include whom, and prints each line that breaks a rule.

Toolkit headers stay in platform/linux/ and program/. The core's folders include only those before them, and of the
platform only the headers of platform/ itself. Every include of ours names the path from the root and exists.
"""

import pathlib
import re
import sys

ROOT = pathlib.Path(__file__).resolve().parent.parent
LAYERS = ["support", "service", "xml", "quakes", "mappages", "saver", "program"]
TOOLKIT = re.compile(
    r"(gtk|gdk|gio|glib|glib-object|gobject|webkit2|jsc|curl|X11|cairo|pango)(/|\.h$|-)|(expat|iconv)\.h$"
)
INCLUDE = re.compile(r'^\s*#\s*include\s*([<"])([^>"]+)[>"]')


def may_use_toolkit(folders):
    return folders[0] in ("program", "tests", "bench") or folders[:2] == ["platform", "linux"]


def fault(folders, bracket, header):
    """What is wrong with an include in that folder, or None."""
    if TOOLKIT.match(header):
        return None if may_use_toolkit(folders) else "toolkit header outside platform/linux/ and program/"
    if bracket == "<":
        return None
    if not (ROOT / header).is_file() and folders[0] not in ("tests", "bench"):
        return "no such header from the repository's root"
    target = header.split("/")
    here = folders[0]
    if here in LAYERS and target[0] in LAYERS and LAYERS.index(target[0]) > LAYERS.index(here):
        return f"{here}/ comes before {target[0]}/"
    if here in LAYERS and here != "program" and target[:2] == ["platform", "linux"]:
        return "the core knows platform/*.h alone"
    if here == "platform" and target[0] == "program":
        return "the platform does not know the host"
    if target[0] in ("tests", "bench") and here not in ("tests", "bench"):
        return "the program does not know its tests"
    return None


def faults():
    for folder in LAYERS + ["platform", "tests", "bench"]:
        for path in sorted((ROOT / folder).rglob("*")):
            if path.suffix not in (".h", ".cpp"):
                continue
            place = path.relative_to(ROOT)
            for number, line in enumerate(path.read_text(encoding="utf-8").splitlines(), start=1):
                match = INCLUDE.match(line)
                wrong = match and fault(list(place.parts[:-1]), *match.groups())
                if wrong:
                    yield f"{place}:{number}: {match.group(2)}: {wrong}"


def main():
    found = list(faults())
    print("\n".join(found) if found else "Includes keep to the rules.")
    return 1 if found else 0


if __name__ == "__main__":
    sys.exit(main())
