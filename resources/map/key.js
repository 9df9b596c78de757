// Says what the lines and the triangles on the map are, in one row beside the scale bar: those that the view shows.

import BASEMAP from "../basemap/vector.json" with {type: "json"};
import {BACKING, HALO, SANS, fillBox, stroke} from "./drawing.js";
import {COLOURS} from "./layers.js";
import {HIDDEN_EDGE} from "./projection.js";
import {isLineInView} from "./shapes.js";

const TEXT_SIZE = 16;  // units, as all that follows
const SAMPLE = 20;
const GAP = 6;  // between sample and text
const SPACE = 16;  // between two entries
const VOLCANO = "#ff8f5e";

// A line of the map is seen through; the short sample would be lost.
const opaque = colour => colour.replace(/[\d.]+\)$/, "1)");

const ENTRIES = [
  {text: "plate boundary", shapes: Object.values(BASEMAP.plates).flat(), colour: COLOURS.trench, width: 2},
  {text: "fault", shapes: BASEMAP.faults, colour: opaque(COLOURS.fault), width: 1.2},
  {text: "volcano", spots: BASEMAP.volcanoes, colour: VOLCANO, width: 0},
];

// Beside the bar; null where it has no room or nothing to say. Volcanoes are left out if none stands on the map.
export function createKey(context, view, scale, {isMirrored}, hasVolcanoes) {
  const unit = view.unit;
  context.font = `${TEXT_SIZE * unit}px ${SANS}`;
  const entries = ENTRIES.filter(entry => isInView(entry, view) && (hasVolcanoes || !entry.spots)).map(entry => (
    {...entry, width: entry.width * unit, length: context.measureText(entry.text).width + (SAMPLE + GAP) * unit}));
  const length = entries.reduce((sum, entry) => sum + entry.length, 0) + (entries.length - 1) * SPACE * unit;
  const left = isMirrored ? scale.box.right + 5 * unit : scale.box.left - 5 * unit - length;
  const box = {left: left - 4 * unit, top: scale.bottom - 22 * unit, right: left + length + 4 * unit,
    bottom: scale.bottom};
  return entries.length > 0 && box.left > HIDDEN_EDGE && box.right < view.width ? {entries, box} : null;
}

function isInView({shapes, spots}, view) {
  return shapes ? shapes.some(shape => isLineInView(shape, view)) :
      spots.some(([, , x, y]) => x > view.west && x < view.east && y > view.south && y < view.north);
}

export function drawKey(context, view, {entries, box}) {
  const unit = view.unit;
  const y = box.bottom - 10.5 * unit;
  let x = box.left + 4 * unit;
  fillBox(context, box, BACKING);
  context.font = `${TEXT_SIZE * unit}px ${SANS}`;
  context.textAlign = "left";
  context.textBaseline = "middle";
  for (const {text, shapes, colour, width, length} of entries) {
    const sample = shapes ? linePath(x, y, unit) : trianglePath(x + SAMPLE * unit / 2, y, 5 * unit);
    stroke(context, sample, HALO, width + 3 * unit);
    stroke(context, sample, colour, width);
    if (!shapes) {
      context.fillStyle = colour;
      context.fill(sample);
    }
    drawText(context, text, x + (SAMPLE + GAP) * unit, y, unit);
    x += length + SPACE * unit;
  }
}

function linePath(x, y, unit) {
  const path = new Path2D();
  path.moveTo(x, y);
  path.lineTo(x + SAMPLE * unit, y);
  return path;
}

function trianglePath(x, y, size) {
  const path = new Path2D();
  path.moveTo(x, y - size);
  path.lineTo(x + size, y + 0.75 * size);
  path.lineTo(x - size, y + 0.75 * size);
  path.closePath();
  return path;
}

function drawText(context, text, x, y, unit) {
  context.lineWidth = 3 * unit;
  context.strokeStyle = HALO;
  context.strokeText(text, x, y);
  context.fillStyle = "rgba(226, 236, 240, 0.9)";
  context.fillText(text, x, y);
}
