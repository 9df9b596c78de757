// What helps to find one's way: the scale bar and the small map of the whole region.

import BASEMAP from "../basemap/vector.json" with {type: "json"};
import {BOUNDARY, HALO, SANS, fillCircle, pathOf, stroke} from "./drawing.js";
import {EARTH_RADIUS, radians} from "./geometry.js";
import {HIDDEN_EDGE, REGION, createViewAt, isInRegion, latitudeAt, mercatorX, mercatorY} from "./projection.js";

const INSET = {width: 118, margin: 22, least: 0.62};  // units; smallest unit of a view that has one
const INSET_SMALLEST_LAND = 0.12;  // degrees across
const SCALE_LENGTH = 130;  // units at most
const SCALE_LEAST = 0.5;

// --- Scale bar: its box ends at the right margin, above bottom

export function createScale(view, bottom) {
  if (view.unit < SCALE_LEAST) {
    return null;
  }
  const perKilometre = view.world / (2 * Math.PI * EARTH_RADIUS * Math.cos(radians(middleLatitude(view))));
  const kilometres = roundLength(SCALE_LENGTH * view.unit / perKilometre);
  const right = view.width - INSET.margin * view.unit;
  const length = kilometres * perKilometre;
  return {kilometres, length, right, bottom,
    box: {left: right - length - 2 * view.unit, top: bottom - 26 * view.unit, right: right + 2 * view.unit, bottom}};
}

function middleLatitude(view) {
  return latitudeAt((view.middle.y + view.top) / view.world);
}

// The largest of 1, 2, 5, 10, 20 ... that is not above most.
function roundLength(most) {
  const power = 10 ** Math.floor(Math.log10(most));
  return [5, 2, 1].find(digit => digit * power <= most) * power;
}

export function drawScale(context, view, {kilometres, length, right, bottom}) {
  const unit = view.unit;
  const y = bottom - 3 * unit;
  context.beginPath();
  context.moveTo(right - length, y - 6 * unit);
  context.lineTo(right - length, y);
  context.lineTo(right, y);
  context.lineTo(right, y - 6 * unit);
  for (const [width, colour] of [[3.6, "rgba(6, 12, 18, 0.6)"], [1.5, "rgba(226, 236, 240, 0.85)"]]) {
    context.lineWidth = width * unit;
    context.strokeStyle = colour;
    context.stroke();
  }
  context.font = `${12.5 * unit}px ${SANS}`;
  context.textAlign = "center";
  context.textBaseline = "alphabetic";
  context.lineWidth = 3 * unit;
  context.strokeStyle = HALO;
  context.strokeText(`${kilometres} km`, right - length / 2, y - 7 * unit);
  context.fillStyle = "rgba(226, 236, 240, 0.9)";
  context.fillText(`${kilometres} km`, right - length / 2, y - 7 * unit);
}

// --- The region with the quake's spot, in the corner at the top right

export function createInset(view, quake) {
  if (view.unit < INSET.least || !quake.place || !isInRegion(quake.place)) {
    return null;
  }
  const width = INSET.width * view.unit;
  const world = width / mercatorX(REGION.east - REGION.west);
  const height = (mercatorY(REGION.south) - mercatorY(REGION.north)) * world;
  const right = view.width - INSET.margin * view.unit;
  const top = HIDDEN_EDGE + INSET.margin * view.unit;
  return {width, height, world, box: {left: right - width, top, right, bottom: top + height}};
}

export function drawInset(context, view, quake, mark, inset, density) {
  const {width, height, world, box} = inset;
  const corner = {latitude: REGION.north, longitude: REGION.west};
  const region = createViewAt(width, height, view.unit, {x: 0, y: 0}, corner, world);
  context.save();
  context.translate(box.left, box.top);
  context.beginPath();
  context.roundRect(0, 0, width, height, 3 * view.unit);
  context.fillStyle = "rgba(7, 15, 25, 0.88)";
  context.fill();
  context.clip();
  drawRegion(context, region, density);
  drawSpot(context, view, region, quake, mark);
  context.restore();
  context.beginPath();
  context.roundRect(box.left, box.top, width, height, 3 * view.unit);
  context.lineWidth = view.unit;
  context.strokeStyle = "rgba(180, 206, 224, 0.3)";
  context.stroke();
}

function drawRegion(context, region, density) {
  const across = INSET_SMALLEST_LAND * BASEMAP.unitsPerDegree;
  const land = BASEMAP.land.filter(([west, south, east, north]) => east - west + north - south > across);
  context.fillStyle = "rgba(150, 172, 178, 0.85)";
  context.fill(pathOf(region, land, density, true));
  stroke(context, pathOf(region, BASEMAP.plates.trench, density), `rgba(${BOUNDARY}, 0.85)`, 0.9 * region.unit);
}

function drawSpot(context, view, region, quake, mark) {
  const spot = {x: region.x(quake.place.longitude), y: region.y(quake.place.latitude)};
  const left = region.x(view.west);
  const top = region.y(view.north);
  context.lineWidth = view.unit;
  context.strokeStyle = "rgba(226, 236, 240, 0.55)";
  context.strokeRect(left, top, region.x(view.east) - left, region.y(view.south) - top);
  fillCircle(context, spot, 8 * view.unit, `rgba(${mark.colour}, 0.3)`);
  fillCircle(context, spot, 3.4 * view.unit, `rgb(${mark.colour})`);
  fillCircle(context, spot, 1.4 * view.unit, "#fff");
}
