// The small map in a corner: the region's part where something is, with all quakes of the list, this one in front.

import BASEMAP from "../basemap/vector.json" with {type: "json"};
import {fillCircle} from "./drawing.js";
import {markColour} from "./mark.js";
import {HIDDEN_EDGE, REGION, createViewAt, isInRegion, latitudeAt, mercatorX, mercatorY, wrapLongitude}
  from "./projection.js";
import {drawRings, fits, ringInView} from "./rings.js";
import {pathOf, sizeOf} from "./shapes.js";

const SIZE = {width: 170, height: 190, margin: 22, least: 0.62};  // units at most; smallest unit of a view that has one
const SMALLEST_LAND = 0.12;  // degrees across
const NEW_ZEALAND = {west: 166, east: 179, south: -47.6, north: -34};
const SPACE = 0.006;  // of the world's width around what is shown
const LEAST_ASPECT = 0.62;  // height to width
const LARGEST_ASPECT = 1.25;

// It holds the rings that are too large for the view, where there is room for them.
export function createInset(view, {quake, list, rings: {outside}}, {isMirrored, x, y}) {
  if (view.unit < SIZE.least || !quake.place || !isInRegion(quake.place)) {
    return null;
  }
  const others = othersOf(list);
  const extent = extentOf([...cornersOf(NEW_ZEALAND), quake.place, ...others.map(({place}) => place),
    ...cornersOf({west: view.west, east: view.east, south: view.south, north: view.north}), ...ringReach(quake, outside)]);
  const world = Math.min(SIZE.width / (extent.right - extent.left), SIZE.height / (extent.bottom - extent.top)) * view.unit;
  const width = (extent.right - extent.left) * world;
  const height = (extent.bottom - extent.top) * world;
  const margin = (SIZE.margin + x) * view.unit;
  const left = isMirrored ? HIDDEN_EDGE + margin : view.width - margin - width;
  const top = HIDDEN_EDGE + (SIZE.margin + y) * view.unit;
  const corner = {latitude: latitudeAt(extent.top), longitude: extent.left * 360};
  const region = createViewAt(width, height, view.unit, {x: 0, y: 0}, corner, world);
  return {region, others, box: {left, top, right: left + width, bottom: top + height},
    rings: outside.map(ring => ringInView(region, quake.place, ring)).filter(ring => fits(ring, region, 0))};
}

function othersOf(list) {
  return (list ? list.shown : []).filter((other, i) => i !== list.index && Number.isFinite(other.latitude) &&
      Number.isFinite(other.longitude)).map(({latitude, longitude, magnitude}) =>
    ({magnitude, place: {latitude, longitude: wrapLongitude(longitude)}})).filter(({place}) => isInRegion(place));
}

function cornersOf({west, east, south, north}) {
  return [{latitude: south, longitude: west}, {latitude: north, longitude: east}];
}

// How far the widest ring reaches that the region holds.
function ringReach({place}, rings) {
  const region = createViewAt(1, 1, 1, {x: 0, y: 0}, {latitude: REGION.north, longitude: REGION.west}, 1);
  const [right, bottom] = [region.x(REGION.east), region.y(REGION.south)];
  const {box} = rings.map(ring => ringInView(region, place, ring))
      .findLast(ring => fits(ring, {width: right, height: bottom}, 0)) || {};
  return box ? cornersOf({
    west: REGION.west + box.left * 360, east: REGION.west + box.right * 360,
    north: latitudeAt(mercatorY(REGION.north) + box.top), south: latitudeAt(mercatorY(REGION.north) + box.bottom),
  }) : [];
}

// The smallest part of the region that holds the places and is neither too flat nor too high, in parts of the world.
function extentOf(places) {
  const limits = {left: mercatorX(REGION.west) - SPACE, right: mercatorX(REGION.east) + SPACE,
    top: mercatorY(REGION.north) - SPACE, bottom: mercatorY(REGION.south) + SPACE};
  const xs = places.map(({longitude}) => mercatorX(longitude));
  const ys = places.map(({latitude}) => mercatorY(latitude));
  const [left, right] = [Math.max(limits.left, Math.min(...xs) - SPACE), Math.min(limits.right, Math.max(...xs) + SPACE)];
  const [top, bottom] = [Math.max(limits.top, Math.min(...ys) - SPACE), Math.min(limits.bottom, Math.max(...ys) + SPACE)];
  const [x1, x2] = widened(left, right, (bottom - top) / LARGEST_ASPECT, limits.left, limits.right);
  const [y1, y2] = widened(top, bottom, (right - left) * LEAST_ASPECT, limits.top, limits.bottom);
  return {left: x1, right: x2, top: y1, bottom: y2};
}

// From start to end, at least so long, and within the limits.
function widened(start, end, least, lowest, highest) {
  const length = Math.min(Math.max(end - start, least), highest - lowest);
  const from = Math.min(Math.max((start + end - length) / 2, lowest), highest - length);
  return [from, from + length];
}

export function drawInset(context, view, quake, {region, others, box, rings}, density) {
  context.save();
  context.translate(box.left, box.top);
  context.beginPath();
  context.roundRect(0, 0, region.width, region.height, 3 * view.unit);
  context.fillStyle = "rgba(7, 15, 25, 0.92)";
  context.fill();
  context.clip();
  drawRegion(context, region, density);
  drawFrame(context, view, region);
  drawRings(context, {...region, unit: 0.7 * view.unit}, rings);
  for (const other of others) {
    drawQuake(context, region, other, 0.75);
  }
  drawQuake(context, region, quake, 1);
  context.restore();
  context.beginPath();
  context.roundRect(box.left, box.top, region.width, region.height, 3 * view.unit);
  context.lineWidth = view.unit;
  context.strokeStyle = "rgba(180, 206, 224, 0.3)";
  context.stroke();
}

function drawRegion(context, region, density) {
  const land = BASEMAP.land.filter(shape => sizeOf(shape) > SMALLEST_LAND);
  context.fillStyle = "rgba(112, 132, 138, 0.85)";
  context.fill(pathOf(region, land, 0.5 / density, true));
}

// What the map shows.
function drawFrame(context, view, region) {
  const left = region.x(view.west);
  const top = region.y(view.north);
  context.lineWidth = view.unit;
  context.strokeStyle = "rgba(226, 236, 240, 0.55)";
  context.strokeRect(left, top, region.x(view.east) - left, region.y(view.south) - top);
}

function drawQuake(context, region, {place, magnitude}, alpha) {
  const spot = {x: region.x(place.longitude), y: region.y(place.latitude)};
  const isFront = alpha === 1;
  const radius = (2 + 0.5 * Math.max(0, (magnitude ?? 4) - 4)) * region.unit * (isFront ? 1.5 : 1);
  fillCircle(context, spot, radius + 1.2 * region.unit, "rgba(6, 10, 16, 0.8)");
  fillCircle(context, spot, radius, `rgba(${markColour(magnitude)}, ${alpha})`);
  if (isFront) {
    fillCircle(context, spot, 0.45 * radius, "#fff");
  }
}
