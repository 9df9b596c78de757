#!/usr/bin/python3
"""Checks who includes whom, and who imports whom among the map page's modules. Prints each include or import that
breaks a rule, or else the order found in the sources.

usage: tools/check_includes.py [FOLDER]    the sources' root; by default this repository's
"""

import collections
import pathlib
import re
import sys

SOURCES = pathlib.Path(__file__).resolve().parent.parent
CONTRACTS = ["platform/portable", "platform"]

# Each layer, from the bottom up, and the layers that it may include besides itself. Arrows only point down.
LAYERS = {
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
LAYERS["idle"] = ["platform/linux"]
LAYERS["program"] = list(LAYERS)
LAYERS["packaging"] = ["program"]
TESTING = ["tests", "bench"]  # may include everything
WITH_TOOLKIT = ["platform/linux", "idle", "program", *TESTING]
TOOLKIT = re.compile(
    r"(gtk|gdk|gio|glib|glib-object|gobject|webkit2|jsc|libsoup|curl|X11|cairo|pango)(/|\.h$|-)|(expat|iconv)\.h$"
)
IMPORT = re.compile(r'^(?:import|export)\b[^"]*?\bfrom\s+"(\.[^"]+)";', re.MULTILINE)
PRELOAD = re.compile(r'<link rel="modulepreload" href="bundle:///([^"]+)">')
INCLUDE = re.compile(r'^\s*#\s*include\s*([<"])([^>"]+)[>"]')


def layer_of(path):
    """The innermost layer that holds the path; for a path outside all layers its first folder."""
    inside = [layer for layer in [*LAYERS, *TESTING] if path.startswith(layer + "/")]
    return max(inside, key=len, default=path.split("/")[0])


def fault(root, path, bracket, header):
    """What is wrong with an include in the file at that path, or None."""
    here = layer_of(path)
    if TOOLKIT.match(header):
        has_toolkit = any(f"{here}/".startswith(f"{layer}/") for layer in WITH_TOOLKIT)
        return None if has_toolkit else "toolkit header outside platform/linux/, idle/ and program/"
    if bracket == "<" or here in TESTING:
        return None
    if not (root / header).is_file():
        return "no such header under the sources' root"
    target = layer_of(header)
    return None if target == here or target in LAYERS.get(here, []) else f"{here}/ must not include {target}/"


def includes(root):
    """Each (path, line number, bracket, header) of the sources."""
    for top in sorted({layer.split("/")[0] for layer in [*LAYERS, *TESTING]}):
        for path in sorted((root / top).rglob("*")):
            if path.suffix in (".h", ".cpp"):
                for number, line in enumerate(path.read_text(encoding="utf-8").splitlines(), start=1):
                    if match := INCLUDE.match(line):
                        yield path.relative_to(root).as_posix(), number, *match.groups()


def print_order(found):
    arrows = collections.defaultdict(collections.Counter)
    for path, _, bracket, header in found:
        if bracket == '"' and layer_of(header) != layer_of(path):
            arrows[layer_of(path)][layer_of(header)] += 1
    for layer in reversed(LAYERS):
        targets = [f"{target} {arrows[layer][target]}" for target in reversed(LAYERS) if arrows[layer][target]]
        print(f"{layer:23} -> {', '.join(targets) or '-'}")


def module_faults(root):
    """A line for each module of the map page that lies in a circle of imports, or that the page does not preload."""
    page = root / "resources/map.html"
    if not page.is_file():
        return
    imports = {
        path: {(path.parent / name).resolve() for name in IMPORT.findall(path.read_text(encoding="utf-8"))}
        for path in sorted(page.parent.rglob("*.js"))
    }
    preloaded = {page.parent / name for name in PRELOAD.findall(page.read_text(encoding="utf-8"))}
    for path in sorted(preloaded ^ (imports.keys() - {page.parent / "map/map.js"})):
        yield f"{path.relative_to(root)}: map.html does not preload exactly the modules that there are"
    rest = set(imports)
    while free := {path for path in rest if not imports[path] & rest}:
        rest -= free
    yield from (f"{path.relative_to(root)}: in or above a circle of imports" for path in sorted(rest))


def main():
    root = pathlib.Path(sys.argv[1] if len(sys.argv) > 1 else SOURCES).resolve()
    found = list(includes(root))
    wrong = [(path, number, header, fault(root, path, bracket, header)) for path, number, bracket, header in found]
    faults = [f"{path}:{number}: {header}: {what}" for path, number, header, what in wrong if what]
    faults += module_faults(root)
    if faults:
        print("\n".join(faults))
        return 1
    print_order(found)
    return 0


if __name__ == "__main__":
    sys.exit(main())
