#!/usr/bin/python3
"""Writes resources/sample-feed.xml, the earthquakes of `tellmar --demo`.

    tools/make_sample_feed.py strong-quakes.tsv

The table has a heading and the columns time (UTC), magnitude, latitude, longitude, depth in kilometres, region.
Its rows keep their order. Two events that a reader of the feed must reject are put in between.
"""

import csv
import pathlib
import sys
import xml.etree.ElementTree as xml

NAMESPACE = "http://quakeml.org/xmlns/quakeml/1.0"
OUTPUT = pathlib.Path(__file__).resolve().parent.parent / "resources" / "sample-feed.xml"
NOTE = (
    " Strong earthquakes of the New Zealand region. Data: GeoNet (CC BY 3.0 NZ) and other agencies."
    " Written by tools/make_sample_feed.py. "
)
BLAST = {
    "time": "2014-06-12T01:30:00.000Z",
    "magnitude": "2.1",
    "latitude": "-43.85",
    "longitude": "171.75",
    "depth_km": "0",
}
WITHOUT_MAGNITUDE = {
    "time": "2015-01-05T17:48:42.000Z",
    "latitude": "-43.05",
    "longitude": "171.24",
    "depth_km": "8",
}


def add(parent, name, text=None, **attributes):
    element = xml.SubElement(parent, name, attributes)
    element.text = text
    return element


def add_value(parent, name, value):
    add(add(parent, name), "value", value)


def add_event(parameters, number, row, kind="earthquake"):
    event = add(parameters, "event", publicID=f"smi:tellmar.example/event/{number}")
    add(event, "type", kind)
    origin = add(event, "origin", publicID=f"smi:tellmar.example/origin/{number}")
    add_value(origin, "time", row["time"])
    add_value(origin, "latitude", row["latitude"])
    add_value(origin, "longitude", row["longitude"])
    add_value(origin, "depth", row["depth_km"])
    if "magnitude" in row:
        magnitude = add(event, "magnitude", publicID=f"smi:tellmar.example/magnitude/{number}")
        add_value(magnitude, "mag", row["magnitude"])
        add(magnitude, "type", "M")


def main():
    if len(sys.argv) != 2:
        raise SystemExit(__doc__)
    with open(sys.argv[1], encoding="utf-8", newline="") as table:
        rows = [(row, "earthquake") for row in csv.DictReader(table, delimiter="\t")]
    rows.insert(3, (BLAST, "quarry blast"))
    rows.insert(8, (WITHOUT_MAGNITUDE, "earthquake"))

    root = xml.Element("quakeml", xmlns=NAMESPACE)
    parameters = add(root, "eventParameters", publicID="smi:tellmar.example/sample")
    for number, (row, kind) in enumerate(rows, start=1):
        add_event(parameters, number, row, kind)
    xml.indent(root)
    OUTPUT.write_text(
        '<?xml version="1.0" encoding="UTF-8"?>\n'
        f"<!--{NOTE}-->\n{xml.tostring(root, encoding='unicode')}\n",
        encoding="utf-8",
    )


if __name__ == "__main__":
    main()
