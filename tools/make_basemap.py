#!/usr/bin/python3
"""Writes resources/basemap/, all that the map page draws under a quake.

    tools/make_basemap.py FOLDER

FOLDER holds vector/*.geojson and relief/{o,l}/X_Y.webp. The results are basemap/vector.json and the relief
tiles in basemap/sea/ and basemap/land/.

A shape is one array in units of 0.0001 degree: west, south, east, north (its bounding box), then the first point
(longitude 0..360, latitude), then every further point as its difference from the one before.
"""

import json
import pathlib
import shutil
import sys

UNITS_PER_DEGREE = 10000
OUTPUT = pathlib.Path(__file__).resolve().parent.parent / "resources" / "basemap"

# Plate boundaries by the class that Bird (2003) gives them.
PLATE_KINDS = {"SUB": "trench", "OSR": "spreading", "CRB": "spreading"}

# Macrons that the source leaves out.
SPELLING = {
    "Maketu": "Maketū",
    "Mapua": "Māpua",
    "Ngaruawahia": "Ngāruawāhia",
    "Patea": "Pātea",
    "Porangahau": "Pōrangahau",
    "Ruakaka": "Ruakākā",
    "Takaka": "Tākaka",
    "Waihi": "Waihī",
    "Waihi Beach": "Waihī Beach",
    "Whangamata": "Whangamatā",
}

# Small towns in sparsely settled areas that the source lacks: name, population, longitude, latitude.
MORE_PLACES = [
    ["Cheviot", 390, 173.274, -42.813],
    ["Culverden", 430, 172.848, -42.774],
    ["Fox Glacier", 290, 170.018, -43.464],
    ["Lumsden", 480, 168.443, -45.739],
    ["Ōmarama", 290, 169.968, -44.488],
    ["Reefton", 930, 171.863, -42.117],
    ["Roxburgh", 600, 169.315, -45.542],
    ["St Arnaud", 110, 172.847, -41.803],
    ["Temuka", 4700, 171.278, -44.247],
    ["Tokomaru Bay", 400, 178.317, -38.129],
    ["Tolaga Bay", 830, 178.299, -38.372],
]

# Names in two languages, shown on two lines.
SECOND_LINES = {"North Island": "Te Ika-a-Māui", "South Island": "Te Waipounamu"}


def features(folder, name):
    return json.loads((folder / "vector" / f"{name}.geojson").read_text(encoding="utf-8"))["features"]


def lines_of(feature):
    """The feature's lines; for a polygon its outer ring, since no layer has holes."""
    geometry = feature["geometry"]
    kind, coordinates = geometry["type"], geometry["coordinates"]
    if kind == "LineString":
        return [coordinates]
    if kind == "Polygon" and len(coordinates) == 1:
        return coordinates
    raise SystemExit(f"the page cannot draw this {kind}")


def encode(line, is_closed):
    points = []
    for longitude, latitude in line:
        point = (round(longitude * UNITS_PER_DEGREE), round(latitude * UNITS_PER_DEGREE))
        if not points or point != points[-1]:
            points.append(point)
    if is_closed and points[0] == points[-1]:
        points.pop()
    xs, ys = zip(*points)
    numbers = [min(xs), min(ys), max(xs), max(ys), *points[0]]
    for before, point in zip(points, points[1:]):
        numbers += [point[0] - before[0], point[1] - before[1]]
    return numbers


def shapes(found, is_closed=False):
    encoded = [encode(line, is_closed) for feature in found for line in lines_of(feature)]
    return [numbers for numbers in encoded if len(numbers) > (8 if is_closed else 6)]


def by_kind(found, kind_of):
    kinds = {}
    for feature in found:
        kinds.setdefault(kind_of(feature["properties"]), []).append(feature)
    return {kind: shapes(members) for kind, members in sorted(kinds.items())}


def places(folder):
    table = [
        [SPELLING.get(f["properties"]["n"], f["properties"]["n"]), f["properties"]["p"], *f["geometry"]["coordinates"]]
        for f in features(folder, "places")
    ]
    return table + MORE_PLACES


def volcanoes(folder):
    """Name, under the sea or not, longitude, latitude; each name once."""
    table = {f["properties"]["n"]: f for f in features(folder, "volcanoes")}
    return [[name, f["properties"]["s"], *f["geometry"]["coordinates"]] for name, f in table.items()]


def labels(folder):
    """Name, kind, rank, angle in degrees, longitude, latitude."""
    table = []
    for f in features(folder, "labels"):
        p = f["properties"]
        if p["n"] in SECOND_LINES.values():
            continue
        name = "\n".join(filter(None, [p["n"], SECOND_LINES.get(p["n"])]))
        table.append([name, p["k"], p["r"], p.get("a", 0), *f["geometry"]["coordinates"]])
    return table


def copy_tiles(source, target):
    shutil.rmtree(target, ignore_errors=True)
    shutil.copytree(source, target, copy_function=shutil.copyfile)
    target.chmod(0o755)
    return sorted(tile.stem for tile in target.glob("*.webp"))


def write_vector(layers):
    text = ",\n\n".join(
        f'"{name}": ' + json.dumps(layer, ensure_ascii=False, separators=(",", ":")).replace("],[", "],\n[")
        for name, layer in layers.items()
    )
    path = OUTPUT / "vector.json"
    path.write_text("{\n" + text + "\n}\n", encoding="utf-8")
    print(f"{path}: {path.stat().st_size} bytes")


def main():
    if len(sys.argv) != 2:
        raise SystemExit(__doc__)
    folder = pathlib.Path(sys.argv[1])
    OUTPUT.mkdir(exist_ok=True)
    write_vector(
        {
            "unitsPerDegree": UNITS_PER_DEGREE,
            "land": shapes(features(folder, "land"), is_closed=True),
            "lakes": shapes(features(folder, "lakes"), is_closed=True),
            "rivers": by_kind(features(folder, "rivers"), lambda p: "main" if p["l"] < 3 else "other"),
            "faults": shapes(features(folder, "faults")),
            "plates": by_kind(features(folder, "plates"), lambda p: PLATE_KINDS.get(p["c"], "sliding")),
            "volcanoes": volcanoes(folder),
            "places": places(folder),
            "labels": labels(folder),
            "tiles": {
                "sea": copy_tiles(folder / "relief" / "o", OUTPUT / "sea"),
                "land": copy_tiles(folder / "relief" / "l", OUTPUT / "land"),
            },
        }
    )


if __name__ == "__main__":
    main()
