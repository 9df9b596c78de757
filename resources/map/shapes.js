// The base map's shapes: coasts, lakes, rivers, faults and plate boundaries. The data hold a box and then steps, in parts
// of a degree; here they become points in parts of the world, once for all who draw them or ask where they are.

import BASEMAP from "../basemap/vector.json" with {type: "json"};
import {mercatorX, mercatorY, wrapLongitude} from "./projection.js";

const SOFTENINGS = 3;
const WIDEST_LINE = 16;  // units

const decoded = new Map();  // points by their shape

// x, y, x, y and so on.
function pointsOf(shape) {
  if (!decoded.has(shape)) {
    decoded.set(shape, decode(shape));
  }
  return decoded.get(shape);
}

function decode(shape) {
  const points = new Float64Array(shape.length - 4);
  let longitude = 0;
  let latitude = 0;
  for (let i = 0; i < points.length; i += 2) {
    longitude += shape[i + 4];
    latitude += shape[i + 5];
    points[i] = mercatorX(longitude / BASEMAP.unitsPerDegree);
    points[i + 1] = mercatorY(latitude / BASEMAP.unitsPerDegree);
  }
  return points;
}

// --- Where they are

// Degrees across, both ways together.
export function sizeOf([west, south, east, north]) {
  return (east - west + north - south) / BASEMAP.unitsPerDegree;
}

// A long line may pass the view by, though its box meets it.
export function isLineInView(shape, view) {
  return boxMeetsView(shape, view) && hasPartInView(pointsOf(shape), view);
}

function boxMeetsView([west, south, east, north], view) {
  const units = BASEMAP.unitsPerDegree;
  return west <= view.east * units && east >= view.west * units &&
      south <= view.north * units && north >= view.south * units;
}

function hasPartInView(points, {left, top, width, height, world}) {
  const isWithin = (from, to, start, length) =>
      Math.min(from, to) * world <= start + length && Math.max(from, to) * world >= start;
  for (let i = 2; i < points.length; i += 2) {
    if (isWithin(points[i - 2], points[i], left, width) && isWithin(points[i - 1], points[i + 1], top, height)) {
      return true;
    }
  }
  return false;
}

export function isInShape(shape, {latitude, longitude}) {
  const [x, y] = [wrapLongitude(longitude), latitude].map(degrees => degrees * BASEMAP.unitsPerDegree);
  const [west, south, east, north] = shape;
  return x >= west && x <= east && y >= south && y <= north &&
      isInside(pointsOf(shape), mercatorX(wrapLongitude(longitude)), mercatorY(latitude));
}

// By the number of edges between the point and the far east.
function isInside(points, x, y) {
  let isIn = false;
  let [beforeX, beforeY] = points.subarray(-2);
  for (let i = 0; i < points.length; i += 2) {
    const [cornerX, cornerY] = [points[i], points[i + 1]];
    if ((cornerY > y) !== (beforeY > y) && x < cornerX + (y - cornerY) / (beforeY - cornerY) * (beforeX - cornerX)) {
      isIn = !isIn;
    }
    [beforeX, beforeY] = [cornerX, cornerY];
  }
  return isIn;
}

// --- How they are drawn

// One path of all shapes that the view meets. Points closer to the one before than that many CSS pixels are left out.
export function pathOf(view, shapes, closest, isClosed = false) {
  const path = new Path2D();
  for (const shape of shapes) {
    if (boxMeetsView(shape, view)) {
      addShape(path, view, pointsOf(shape), closest, isClosed);
    }
  }
  return path;
}

function addShape(path, view, points, closest, isClosed) {
  const {left, top, world} = view;
  const edges = edgesPassed(points, view);
  let [lastX, lastY] = [points[0] * world - left, points[1] * world - top];
  path.moveTo(lastX, lastY);
  for (let i = 1; i < edges.length; ++i) {
    const isHidden = edges[i] && edges[i] === edges[i - 1] && edges[i] === edges[i + 1];
    const x = points[2 * i] * world - left;
    const y = points[2 * i + 1] * world - top;
    if (!isHidden && (Math.abs(x - lastX) + Math.abs(y - lastY) >= closest || i === edges.length - 1)) {
      path.lineTo(x, y);
      lastX = x;
      lastY = y;
    }
  }
  if (isClosed) {
    path.closePath();
  }
}

// The edge of the view beyond which each point lies, by a number; 0 for none. A point between two others beyond the same
// edge changes nothing in the view.
function edgesPassed(points, {left, top, width, height, world, unit}) {
  const margin = WIDEST_LINE * Math.max(1, unit);
  const [west, east] = [(left - margin) / world, (left + width + margin) / world];
  const [north, south] = [(top - margin) / world, (top + height + margin) / world];
  const edges = new Uint8Array(points.length / 2);
  for (let i = 0; i < edges.length; ++i) {
    const [x, y] = [points[2 * i], points[2 * i + 1]];
    edges[i] = x < west ? 1 : x > east ? 2 : y < north ? 3 : y > south ? 4 : 0;
  }
  return edges;
}

// The lines that the view meets as curves: arrays of points {x, y}.
export function curvesOf(view, shapes) {
  return shapes.filter(shape => boxMeetsView(shape, view)).map(shape => softened(screenPoints(pointsOf(shape), view)));
}

function screenPoints(points, {left, top, world}) {
  return Array.from({length: points.length / 2}, (_, i) => (
    {x: points[2 * i] * world - left, y: points[2 * i + 1] * world - top}));
}

// Cuts all corners between the ends, again and again.
function softened(points) {
  let curve = points;
  for (let i = 0; i < SOFTENINGS && curve.length > 2; ++i) {
    const cut = curve.slice(1).flatMap((to, k) => [between(curve[k], to, 0.25), between(curve[k], to, 0.75)]);
    curve = [points[0], ...cut.slice(1, -1), points.at(-1)];
  }
  return curve;
}

export function between(from, to, part) {
  return {x: from.x + part * (to.x - from.x), y: from.y + part * (to.y - from.y)};
}
