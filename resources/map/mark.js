// The mark of the quake: a white point at the place itself and rings around it. Its size and colour tell the
// magnitude, the rings and their glow the depth: full and warm when shallow, broken and cold when deep.

import {fillCircle} from "./drawing.js";
import {depthClass} from "./words.js";

const MAGNITUDE_COLOURS = [[8, "255, 58, 110"], [7, "255, 74, 66"], [6, "255, 122, 56"], [5, "255, 172, 62"],
  [4, "255, 214, 104"], [-Infinity, "222, 232, 150"]];
const UNKNOWN_COLOUR = "206, 220, 228";
const DEPTH_STYLES = {
  shallow: {glow: null, dashes: [], fill: 0.34},
  intermediate: {glow: "168, 120, 255", dashes: [0.34, 0.16], fill: 0.16},
  deep: {glow: "70, 164, 255", dashes: [0.02, 0.12], fill: 0.05},
};
const RINGS = [{part: 0.36, alpha: 1, width: 2.2}, {part: 0.66, alpha: 0.85, width: 1.9}, {part: 1, alpha: 0.65, width: 1.6}];
const GLOW_REACH = 2.1;  // radii
const LARGEST_PART = 0.14;  // of the smaller side

export function markColour(magnitude) {
  return magnitude === null ? UNKNOWN_COLOUR : MAGNITUDE_COLOURS.find(([least]) => magnitude >= least)[1];
}

export function createMark(view, quake) {
  const strength = quake.magnitude === null ? 4.5 : Math.min(Math.max(quake.magnitude, 2), 9);
  const style = DEPTH_STYLES[(depthClass(quake.depth) || {name: "shallow"}).name];
  const colour = markColour(quake.magnitude);
  return {
    x: view.middle.x,
    y: view.middle.y,
    radius: Math.min((5 + 1.25 * strength ** 2) * Math.max(0.4, view.unit),
        LARGEST_PART * Math.min(view.width, view.height)),
    unit: Math.max(0.55, view.unit),
    colour,
    glow: style.glow || colour,
    dashes: style.dashes,
    fill: style.fill,
  };
}

export function boxOfMark(mark) {
  const reach = mark.radius + 2 * mark.unit;
  return {left: mark.x - reach, top: mark.y - reach, right: mark.x + reach, bottom: mark.y + reach};
}

export function drawMark(context, mark) {
  drawGlow(context, mark);
  for (const ring of RINGS) {
    drawRing(context, mark, ring);
  }
  drawPoint(context, mark);
}

function drawGlow(context, mark) {
  const reach = mark.radius * GLOW_REACH;
  const glow = context.createRadialGradient(mark.x, mark.y, 0, mark.x, mark.y, reach);
  for (const [at, alpha] of [[0, 0.75], [0.22, 0.42], [0.48, 0.2], [1, 0]]) {
    glow.addColorStop(at, `rgba(${mark.glow}, ${alpha})`);
  }
  fillCircle(context, mark, reach, glow);
  fillCircle(context, mark, mark.radius * RINGS[0].part, `rgba(${mark.colour}, ${mark.fill})`);
}

function drawRing(context, mark, {part, alpha, width}) {
  const radius = mark.radius * part;
  context.setLineDash(part < 0.5 ? [] : mark.dashes.map(length => length * mark.radius));
  context.beginPath();
  context.arc(mark.x, mark.y, radius, 0, 2 * Math.PI);
  context.lineWidth = (width + 2.4) * mark.unit;
  context.strokeStyle = `rgba(6, 10, 16, ${alpha * 0.4})`;
  context.stroke();
  context.lineWidth = width * mark.unit;
  context.strokeStyle = `rgba(${mark.colour}, ${alpha})`;
  context.stroke();
  context.setLineDash([]);
}

function drawPoint(context, mark) {
  const size = Math.min(4.2 * mark.unit, mark.radius * 0.25);
  fillCircle(context, mark, size * 1.6, "rgba(8, 10, 14, 0.55)");
  fillCircle(context, mark, size, "#fff");
}
