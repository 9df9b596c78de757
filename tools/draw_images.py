#!/usr/bin/python3
"""Draws the two pictures of the bundle from the coast in resources/land.js.

    tools/draw_images.py

google_maps_nz.png      New Zealand whole, for the splash: drawn there at its natural size and at 30 % strength
google_maps_nz_pre.png  the region, for the settings preview: stretched there, with four lines of text at the top

Needs pycairo (package python3-cairo), no display.
"""

import json
import math
import pathlib

import cairo

RESOURCES = pathlib.Path(__file__).resolve().parent.parent / "resources"
UNITS_PER_DEGREE = 10000


def read_land():
    """Lists of (longitude, latitude), one a polygon; land.js says how they are written."""
    text = (RESOURCES / "land.js").read_text(encoding="utf-8")
    land = []
    for numbers in json.loads(text[text.index("[") : text.rindex("]") + 1]):
        x = y = 0
        outline = []
        for i in range(4, len(numbers), 2):
            x += numbers[i]
            y += numbers[i + 1]
            outline.append((x / UNITS_PER_DEGREE, y / UNITS_PER_DEGREE))
        land.append(outline)
    return land


def mercator(latitude):
    """Degrees from the equator, downward, on a map where a degree of longitude is one."""
    return -math.degrees(math.asinh(math.tan(math.radians(latitude))))


class Map:
    """A picture in Web Mercator around a middle point, with a scale in pixels a degree of longitude."""

    def __init__(self, width, height, longitude, latitude, scale):
        self.width, self.height, self.scale = width, height, scale
        self.left = longitude * scale - width / 2
        self.top = mercator(latitude) * scale - height / 2
        self.surface = cairo.ImageSurface(cairo.FORMAT_ARGB32, width, height)
        self.context = cairo.Context(self.surface)
        self.context.set_line_join(cairo.LINE_JOIN_ROUND)

    def x(self, longitude):
        return longitude * self.scale - self.left

    def y(self, latitude):
        return mercator(latitude) * self.scale - self.top

    def outline(self, land):
        self.context.new_path()
        for points in land:
            self.context.new_sub_path()
            for longitude, latitude in points:
                self.context.line_to(self.x(longitude), self.y(latitude))
            self.context.close_path()

    def shallows(self, land, widths, colour):
        """Lines along the coast, each one narrower than the one before, that add up to a soft shelf."""
        self.outline(land)
        self.context.set_source_rgba(*colour)
        for width in widths:
            self.context.set_line_width(width)
            self.context.stroke_preserve()

    def fill_land(self, land, fill, coast, coast_width):
        self.outline(land)
        self.context.set_source_rgba(*fill)
        self.context.fill_preserve()
        self.context.set_source_rgba(*coast)
        self.context.set_line_width(coast_width)
        self.context.stroke()

    def graticule(self, step, colour, line_width):
        for degrees in range(0, 360, step):
            self.context.move_to(self.x(degrees), 0)
            self.context.line_to(self.x(degrees), self.height)
        for degrees in range(-80, 81, step):
            self.context.move_to(0, self.y(degrees))
            self.context.line_to(self.width, self.y(degrees))
        self.context.set_source_rgba(*colour)
        self.context.set_line_width(line_width)
        self.context.stroke()

    def fade_edges(self):
        """Keeps the middle and lets the picture run out into nothing before its edges."""
        middle_x, middle_y = self.width / 2, self.height / 2
        radius = min(middle_x, middle_y)
        mask = cairo.RadialGradient(middle_x, middle_y, radius * 0.72, middle_x, middle_y, radius)
        mask.add_color_stop_rgba(0, 0, 0, 0, 1)
        mask.add_color_stop_rgba(1, 0, 0, 0, 0)
        self.context.set_operator(cairo.OPERATOR_DEST_IN)
        self.context.set_source(mask)
        self.context.paint()

    def write(self, name):
        path = RESOURCES / name
        self.surface.write_to_png(str(path))
        print(f"{path}: {self.width} x {self.height}, {path.stat().st_size} bytes")


def draw_splash(land):
    """Strong colours, since the splash shows three tenths of them. Fits into the program's window, 720 points high."""
    picture = Map(680, 680, 174.6, -41.4, 33)
    picture.graticule(5, (0.05, 0.15, 0.28, 0.5), 1)
    picture.fade_edges()
    picture.context.set_operator(cairo.OPERATOR_OVER)
    picture.shallows(land, (20, 11, 5), (1, 1, 1, 0.28))
    picture.fill_land(land, (0.03, 0.17, 0.27, 1), (0, 0.05, 0.12, 1), 0.8)
    picture.write("google_maps_nz.png")


def near_new_zealand(land):
    return [outline for outline in land if 165 < outline[0][0] < 185]


def draw_preview(land):
    """Twice the size of a usual preview. The sea is light, and calm at the top: black text stands there."""
    land = near_new_zealand(land)
    picture = Map(1130, 634, 173.2, -40.2, 29)
    sea = cairo.LinearGradient(0, 0, 0, picture.height)
    sea.add_color_stop_rgb(0, 0.87, 0.92, 0.95)
    sea.add_color_stop_rgb(1, 0.62, 0.76, 0.84)
    picture.context.set_source(sea)
    picture.context.paint()
    picture.graticule(5, (1, 1, 1, 0.35), 2)
    picture.shallows(land, (22, 12, 6), (1, 1, 1, 0.22))
    picture.fill_land(land, (0.47, 0.60, 0.50, 1), (0.25, 0.38, 0.36, 1), 1.4)
    picture.write("google_maps_nz_pre.png")


def main():
    land = read_land()
    draw_splash(land)
    draw_preview(land)


if __name__ == "__main__":
    main()
