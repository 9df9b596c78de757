#!/usr/bin/env python3
"""Writes resources/land.js, the coast that the map page and the pictures draw.

    tools/make_land.py land.geojson

One array a polygon, in units of 0.0001 degree: west, south, east, north (its bounding box), then the first
point (longitude 0..360, latitude), then every further point as its difference from the one before.
"""

import json
import pathlib
import sys

UNITS_PER_DEGREE = 10000
OUTPUT = pathlib.Path(__file__).resolve().parent.parent / "resources" / "land.js"


def rings(feature):
    """The outer rings of a feature: the coast has no holes, lakes are a layer of their own."""
    geometry = feature["geometry"]
    polygons = geometry["coordinates"]
    if geometry["type"] == "Polygon":
        polygons = [polygons]
    for polygon in polygons:
        if len(polygon) != 1:
            raise SystemExit("a polygon with holes: the page fills outer rings alone")
        yield polygon[0]


def whole_units(ring):
    """The ring's points as whole units, without repeats and without the last point that closes it."""
    points = []
    for longitude, latitude in ring:
        point = (round(longitude * UNITS_PER_DEGREE), round(latitude * UNITS_PER_DEGREE))
        if not points or point != points[-1]:
            points.append(point)
    if len(points) > 1 and points[0] == points[-1]:
        points.pop()
    return points


def encode(points):
    xs, ys = zip(*points)
    numbers = [min(xs), min(ys), max(xs), max(ys), *points[0]]
    for before, point in zip(points, points[1:]):
        numbers += [point[0] - before[0], point[1] - before[1]]
    return numbers


def main():
    if len(sys.argv) != 2:
        raise SystemExit(__doc__)
    features = json.loads(pathlib.Path(sys.argv[1]).read_text(encoding="utf-8"))["features"]
    outlines = [whole_units(ring) for feature in features for ring in rings(feature)]
    lines = [json.dumps(encode(points), separators=(",", ":")) for points in outlines if len(points) > 2]
    OUTPUT.write_text(
        "// Coast: GSHHG 2.3.7, LGPL-3.0-or-later (see ATTRIBUTION.md). Written by tools/make_land.py.\n"
        "var LAND = [\n" + ",\n".join(lines) + "\n];\n",
        encoding="utf-8",
    )
    print(f"{OUTPUT}: {len(lines)} polygons, {OUTPUT.stat().st_size} bytes")


if __name__ == "__main__":
    main()
