#!/usr/bin/python3
"""Writes resources/basemap/, all that the map page draws under a quake.

    tools/make_basemap.py FOLDER

FOLDER holds vector/*.geojson and relief/{o,l}/X_Y.webp. The results are basemap/vector.json and the relief
tiles in basemap/sea/ and basemap/land/.

A shape is one array in units of 0.0001 degree: west, south, east, north (its bounding box), then the first point
(longitude 0..360, latitude), then every further point as its difference from the one before.
"""

import json
import math
import pathlib
import shutil
import sys

UNITS_PER_DEGREE = 10000
OUTPUT = pathlib.Path(__file__).resolve().parent.parent / "resources" / "basemap"

# Plate boundaries by the class that Bird (2003) gives them.
PLATE_KINDS = {"SUB": "trench", "OSR": "spreading", "CRB": "spreading"}

# The source's names beside those of the gazetteers.
SPELLING = {
    "Antipodes Island": "Antipodes Islands",
    "Maketu": "Maketū",
    "Mapua": "Māpua",
    "Ngaruawahia": "Ngāruawāhia",
    "Nuku‘alofa": "Nukuʻalofa",
    "Patea": "Pātea",
    "Porangahau": "Pōrangahau",
    "Port-Vila": "Port Vila",
    "Rakiura / Stewart Island": "Stewart Island / Rakiura",
    "Ruakaka": "Ruakākā",
    "Takaka": "Tākaka",
    "Taranaki": "Taranaki Maunga",
    "Tūhua / Mayor Island": "Mayor Island / Tūhua",
    "Waihi": "Waihī",
    "Waihi Beach": "Waihī Beach",
    "Whangamata": "Whangamatā",
}

# Names that the sources set beside their feature: longitude, latitude.
MOVED = {
    "Bay of Plenty": [177.0, -37.6],
    "Bollons Seamount": [183.1, -49.7],
    "Chatham Islands": [183.47, -43.82],
    "Colville Ridge": [179.05, -33.1],
    "Karamea Bight": [171.55, -41.45],
    "Kermadec Ridge": [180.75, -32.75],
    "L'Esperance Rock": [181.1, -31.43],
    "Levuka": [178.835, -17.683],
    "Louisville Ridge": [187.75, -31.3],
    "Macauley Island": [181.57, -30.24],
    "Pegasus Bay": [172.95, -43.35],
    "Poverty Bay": [178.0, -38.7],
    "Tasman Bay": [173.3, -41.02],
}
TURNED = {"Louisville Ridge": 66}  # degrees
KINDS = {  # of those waters that a name must not leave
    **dict.fromkeys(["Karamea Bight", "Pegasus Bay", "Poverty Bay", "Tasman Bay"], "bay"),
    **dict.fromkeys(["Bay of Plenty", "Canterbury Bight", "Cook Strait", "Foveaux Strait", "Hauraki Gulf", "Hawke Bay",
                     "South Taranaki Bight"], "strait"),
}

# Residents where the source has a round default or another settlement's number, rounded.
PEOPLE = {
    "Alexandra": 5900,
    "Castlepoint": 60,
    "Colville": 150,
    "Dannevirke": 5500,
    "Hicks Bay": 250,
    "Huntly": 8700,
    "Kaikohe": 4900,
    "Levuka": 4400,
    "Martinborough": 2000,
    "Marton": 5200,
    "Morrinsville": 8800,
    "Pahiatua": 2800,
    "Rangiora": 19000,
    "Renwick": 2500,
    "Stratford": 6100,
    "Taihape": 1700,
    "Te Awamutu": 13800,
    "Te Kūiti": 4700,
    "Tiniroto": 50,
    "Waimate": 3500,
    "Woodville": 1600,
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
    # At the map's edges, and beyond them for quakes that are nearest to these.
    ["Apia", 37000, 188.23, -13.83],
    ["Avarua", 5400, 200.22, -21.21],
    ["Brisbane", 2700000, 153.03, -27.47],
    ["Cairns", 153000, 145.77, -16.92],
    ["Canberra", 456000, 149.13, -35.28],
    ["Gold Coast", 640000, 153.43, -28.0],
    ["Hobart", 197000, 147.33, -42.88],
    ["Honiara", 92000, 159.95, -9.43],
    ["Mackay", 80000, 149.19, -21.14],
    ["Melbourne", 5200000, 144.96, -37.81],
    ["Newcastle", 322000, 151.78, -32.93],
    ["Pago Pago", 3700, 189.3, -14.28],
    ["Port Moresby", 365000, 147.18, -9.44],
    ["Rockhampton", 79000, 150.51, -23.38],
    ["Sydney", 5450000, 151.21, -33.87],
    ["Townsville", 180000, 146.82, -19.26],
]

# Wide waters have their name in many places, for the map shows the one that suits the view: name, kind, rank, places.
MORE_NAMES = [
    ["Chatham Rise", "rise", 1, [[181.6, -43.45]]],
    ["Coral Sea", "sea", 1, [[150.8, -15.5], [153.5, -21.5], [160.5, -21.8]]],
    ["South Pacific Ocean", "sea", 2, [[183, -46.6], [189, -36], [192, -16.5], [196, -21.5], [197, -30], [197, -42],
                                       [192, -51], [184, -54.5], [196.5, -57]]],
    ["Southern Ocean", "sea", 2, [[152.5, -52.5], [151, -62.5], [158, -59], [165, -60.5], [175, -57.5], [187, -60.5], [197.5, -61.5]]],
    ["Tasman Sea", "sea", 2, [[154.5, -34], [155, -41], [164.5, -44.5], [170.3, -38.4], [169, -42.3]]],
]

# Names in two languages, shown on two lines.
SECOND_LINES = {"North Island": "Te Ika-a-Māui", "South Island": "Te Waipounamu"}

PLATES = {
    "AN": "Antarctic Plate",
    "AU": "Australian Plate",
    "KE": "Kermadec Plate",
    "NH": "New Hebrides Plate",
    "NI": "Niuafoʻou Plate",
    "PA": "Pacific Plate",
    "TO": "Tonga Plate",
}

# Bird's line crosses the South Island some ten kilometres beside its great faults. Here it follows their traces.
ALPINE_FAULT = [[168.052, -44.417], [168.358, -44.235], [168.709, -44.063], [169.084, -43.902], [169.666, -43.637],
                [170.05, -43.454], [170.486, -43.226], [170.756, -43.096], [171.15, -42.893]]
HOPE_FAULT = [[171.15, -42.893], [171.383, -42.867], [171.825, -42.743], [172.247, -42.63], [172.62, -42.588],
              [172.78, -42.582], [173.02, -42.532], [173.31, -42.412], [173.675, -42.316], [174.133, -42.15]]

# Names along a plate boundary: pair of plates, class, southern and northern end, kind, name.
ALONG = [
    ["AU-PA", "CTF", -44.1, -42.9, "fault", "Alpine Fault"],
    ["KE/PA", "SUB", -42, -37.6, "line", "Hikurangi Trough"],
    ["KE/PA", "SUB", -37.2, -24, "line", "Kermadec Trench"],
    ["NH/AU", "SUB", -24, -14, "line", "New Hebrides Trench"],
    ["PA-AU", "OCB", -60, -57, "line", "Hjort Trench"],
    ["PA/AU", "SUB", -50, -45.3, "line", "Puysegur Trench"],
    ["TO/PA", "SUB", -23.5, -15, "line", "Tonga Trench"],
]
NAME_SPACING = 1.2  # degrees along a boundary
LAND_END = (149, 145)  # degrees: where the source cuts the land off, and where it ends here, beyond the relief
TRENCH_GRAIN = 0.4  # degrees; the source's smaller bends come from drawing by hand


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


def land(folder):
    """The coasts. The source's end is no coast, so the land goes on to where nothing is drawn."""
    found = features(folder, "land")
    for feature in found:
        for line in lines_of(feature):
            line[:] = [[LAND_END[1] if x == LAND_END[0] else x, y] for x, y in line]
    return shapes(found, is_closed=True)


def by_kind(found, kind_of):
    kinds = {}
    for feature in found:
        kinds.setdefault(kind_of(feature["properties"]), []).append(feature)
    return {kind: shapes(members) for kind, members in sorted(kinds.items())}


def boundaries(folder):
    found = [feature for feature in features(folder, "plates") if not is_boundary(feature, "AU-PA", "CCB")]
    for feature in found:
        line = feature["geometry"]["coordinates"]
        if is_boundary(feature, "AU\\PA", "SUB"):
            line[-3:] = ALPINE_FAULT[:3]
        elif is_boundary(feature, "AU-PA", "CTF"):
            is_alpine = line[0][0] < 170
            line[:] = ALPINE_FAULT[2:] if is_alpine else HOPE_FAULT + [point for point in line if point[0] > 174.5]
    return found


def is_boundary(feature, pair, kind):
    return (feature["properties"]["b"], feature["properties"]["c"]) == (pair, kind)


def plates(folder):
    """The boundaries. A trench has the plate that stays on top at its left, and points far enough apart for a curve."""
    found = boundaries(folder)
    for feature in found:
        if "\\" in feature["properties"]["b"]:
            feature["geometry"]["coordinates"].reverse()
        if feature["properties"]["c"] == "SUB":
            feature["geometry"]["coordinates"] = thinned(feature["geometry"]["coordinates"], TRENCH_GRAIN)
    return by_kind(found, lambda p: PLATE_KINDS.get(p["c"], "sliding"))


def thinned(line, grain):
    kept = line[:1]
    for point in line[1:-1]:
        if math.dist(point, kept[-1]) >= grain and math.dist(point, line[-1]) >= grain:
            kept.append(point)
    return kept + line[-1:]


def named_points(folder, layer):
    """Each feature's properties, its name and its place, corrected."""
    for feature in features(folder, layer):
        name = feature["properties"]["n"]
        name = SPELLING.get(name, name)
        yield feature["properties"], name, MOVED.get(name, feature["geometry"]["coordinates"])


def places(folder):
    """Name, residents, longitude, latitude."""
    return [[name, PEOPLE.get(name, p["p"]), *place] for p, name, place in named_points(folder, "places")] + MORE_PLACES


def volcanoes(folder):
    """Name, under the sea or not, longitude, latitude; each name once."""
    table = {name: [name, p["s"], *place] for p, name, place in named_points(folder, "volcanoes")}
    return list(table.values())


def labels(folder):
    """Name, kind, rank, angle in degrees, longitude, latitude."""
    along = {name for *_, name in ALONG}
    table = []
    for p, name, place in named_points(folder, "labels"):
        if name in along or name in SECOND_LINES.values():
            continue
        kind = KINDS.get(name, p["k"])
        lines = "\n".join(filter(None, [name, SECOND_LINES.get(name)]))
        table.append([lines, kind, p["r"], TURNED.get(name, p.get("a", 0)), *place])
    table += [[name, kind, rank, 0, *place] for name, kind, rank, found in MORE_NAMES for place in found]
    return table + boundary_names(folder)


def boundary_names(folder):
    """Labels that stand beside a boundary, at the left of the direction that their angle gives."""
    table = []
    for feature in boundaries(folder):
        pair, kind = feature["properties"]["b"], feature["properties"]["c"]
        for angle, longitude, latitude in stations(feature["geometry"]["coordinates"]):
            place = [round(longitude, 2), round(latitude, 2)]
            back = angle - 180 if angle > 0 else angle + 180
            for name, along in ((PLATES.get(pair[:2]), angle), (PLATES.get(pair[3:]), back)):
                if name:
                    table.append([name, "plate", 1, along, *place])
            table += [
                [name, label, 1, back, *place]
                for own_pair, own_kind, south, north, label, name in ALONG
                if is_boundary(feature, own_pair, own_kind) and south <= latitude <= north
            ]
    return table


def stations(line):
    """Points at equal distances along a line, each with the line's direction there: clockwise from east, in degrees."""
    lengths = [math.dist(*ends) for ends in zip(line, line[1:])]
    count = round(sum(lengths) / NAME_SPACING)
    for i in range(count):
        middle = sum(lengths) * (i + 0.5) / count
        ends = [point_at(line, lengths, middle + half) for half in (-NAME_SPACING / 3, NAME_SPACING / 3)]
        (west, south), (east, north) = ends
        longitude, latitude = point_at(line, lengths, middle)
        angle = math.degrees(math.atan2(south - north, (east - west) * math.cos(math.radians(latitude))))
        yield round(angle), longitude, latitude


def point_at(line, lengths, distance):
    for start, end, length in zip(line, line[1:], lengths):
        if distance <= length or end is line[-1]:
            part = min(max(distance / length, 0), 1)
            return [a + part * (b - a) for a, b in zip(start, end)]
        distance -= length


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
            "land": land(folder),
            "lakes": shapes(features(folder, "lakes"), is_closed=True),
            "rivers": by_kind(features(folder, "rivers"), lambda p: "main" if p["l"] < 3 else "other"),
            "faults": shapes(features(folder, "faults")),
            "plates": plates(folder),
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
