// The map under the names: sea, land, water, faults and plates, drawn in this order.

import BASEMAP from "../basemap/vector.json" with {type: "json"};
import {BOUNDARY, fillBox, pathOfCurves, stroke} from "./drawing.js";
import {drawRelief, reliefBounds} from "./relief.js";
import {between, curvesOf, pathOf} from "./shapes.js";

export const COLOURS = {
  sea: "#0a1a2e",
  seaClear: "rgba(10, 26, 46, 0)",
  calm: "rgba(5, 16, 32, 0.24)",  // over the sea floor, whose shallows are bright
  land: "#2a3330",
  grid: "rgba(170, 205, 230, 0.09)",
  shallows: "rgba(140, 205, 230, 0.07)",
  coast: "rgba(196, 220, 226, 0.55)",
  lake: "#173a52",
  lakeShore: "rgba(140, 185, 205, 0.45)",
  river: "rgba(104, 160, 192, 0.55)",
  fault: "rgba(206, 228, 220, 0.36)",
  plate: `rgba(${BOUNDARY}, 0.8)`,
  trench: `rgb(${BOUNDARY})`,
  trenchGlow: `rgba(${BOUNDARY}, 0.16)`,
  darkness: "2, 6, 12",
};

const TOOTH_SPACING = 44;  // units
const TOOTH_SIZE = 5;
const RELIEF_FADE = 4;  // degrees of longitude
const SOFT_STEP = 2;  // units between the points of a line that is wide and faint
const GRAIN_SIZE = 128;  // pixels
const GRAIN_ALPHA = 9;  // of 255

export function drawLayers(context, view, density) {
  context.lineJoin = "round";
  context.lineCap = "round";
  drawSea(context, view, density);
  drawGrid(context, view);
  const coast = pathOf(view, BASEMAP.land, 0.5 / density, true);
  drawLand(context, view, coast, density);
  drawWater(context, view, density);
  stroke(context, coast, COLOURS.coast, 0.8 * lineUnit(view));
  drawEndOfRelief(context, view);
  drawTectonics(context, view, density);
  drawDarkEdges(context, view);
  drawGrain(context, view);
}

function lineUnit(view) {
  return Math.max(0.8, view.unit);
}

function drawSea(context, view, density) {
  context.fillStyle = COLOURS.sea;
  context.fillRect(0, 0, view.width, view.height);
  drawRelief(context, view, "sea", density);
  context.fillStyle = COLOURS.calm;
  context.fillRect(0, 0, view.width, view.height);
}

// The relief ends at straight lines; before them land and sea sink into the dark.
function drawEndOfRelief(context, view) {
  const {west, east, north, south} = reliefBounds();
  const width = RELIEF_FADE * view.world / 360;
  const {x, y, height} = view;
  fadeOut(context, {left: 0, right: x(west) + width, top: 0, bottom: height}, {x: x(west)}, {x: x(west) + width});
  fadeOut(context, {left: x(east) - width, right: view.width, top: 0, bottom: height}, {x: x(east)}, {x: x(east) - width});
  fadeOut(context, {left: 0, right: view.width, top: 0, bottom: y(north) + width}, {y: y(north)}, {y: y(north) + width});
  fadeOut(context, {left: 0, right: view.width, top: y(south) - width, bottom: height}, {y: y(south)}, {y: y(south) - width});
}

// From the sea's colour to clear.
function fadeOut(context, box, {x: x1 = 0, y: y1 = 0}, {x: x2 = 0, y: y2 = 0}) {
  const fade = context.createLinearGradient(x1, y1, x2, y2);
  fade.addColorStop(0, COLOURS.sea);
  fade.addColorStop(1, COLOURS.seaClear);
  fillBox(context, box, fade);
}

export function drawLand(context, view, coast, density) {
  const softCoast = pathOf(view, BASEMAP.land, SOFT_STEP * lineUnit(view), true);
  stroke(context, softCoast, COLOURS.shallows, 14 * lineUnit(view));
  stroke(context, softCoast, COLOURS.shallows, 6 * lineUnit(view));
  context.fillStyle = COLOURS.land;
  context.fill(coast);
  drawRelief(context, view, "land", density);
}

export function drawWater(context, view, density) {
  const closest = 0.5 / density;
  const lakes = pathOf(view, BASEMAP.lakes, closest, true);
  stroke(context, pathOf(view, BASEMAP.rivers.other, closest), COLOURS.river, 0.8 * lineUnit(view));
  stroke(context, pathOf(view, BASEMAP.rivers.main, closest), COLOURS.river, 1.2 * lineUnit(view));
  context.fillStyle = COLOURS.lake;
  context.fill(lakes);
  stroke(context, lakes, COLOURS.lakeShore, 0.7 * lineUnit(view));
}

function drawTectonics(context, view, density) {
  const unit = lineUnit(view);
  const {trench, spreading, sliding} = BASEMAP.plates;
  const pathOfLines = lines => pathOfCurves(curvesOf(view, lines));
  stroke(context, pathOf(view, BASEMAP.faults, 0.5 / density), COLOURS.fault, 0.9 * unit);
  stroke(context, pathOfLines(spreading), COLOURS.plate, 1.3 * unit);
  stroke(context, pathOfLines(sliding), COLOURS.plate, 1.3 * unit, [7 * unit, 5 * unit]);
  drawTrenches(context, curvesOf(view, trench), unit);
}

function drawTrenches(context, curves, unit) {
  const path = pathOfCurves(curves);
  stroke(context, path, COLOURS.trenchGlow, 9 * unit);
  stroke(context, path, COLOURS.trench, 2 * unit);
  context.fillStyle = COLOURS.trench;
  curves.forEach(curve => context.fill(teethOf(curve, unit)));
}

// Triangles at the left of a line, where the upper plate is: they point the way that the lower one goes down.
function teethOf(curve, unit) {
  const teeth = new Path2D();
  let untilNext = TOOTH_SPACING * unit / 2;
  curve.slice(1).forEach((to, i) => {
    const from = curve[i];
    const length = Math.hypot(to.x - from.x, to.y - from.y);
    for (; untilNext < length; untilNext += TOOTH_SPACING * unit) {
      const base = between(from, to, untilNext / length);
      addTooth(teeth, base, (to.x - from.x) / length * TOOTH_SIZE * unit, (to.y - from.y) / length * TOOTH_SIZE * unit);
    }
    untilNext -= length;
  });
  return teeth;
}

function addTooth(path, {x, y}, dx, dy) {
  path.moveTo(x - dx, y - dy);
  path.lineTo(x + 1.5 * dy, y - 1.5 * dx);
  path.lineTo(x + dx, y + dy);
  path.closePath();
}

function drawGrid(context, view) {
  const step = gridStep(view);
  const grid = new Path2D();
  for (let longitude = Math.ceil(view.west / step) * step; longitude < view.east; longitude += step) {
    grid.moveTo(view.x(longitude), 0);
    grid.lineTo(view.x(longitude), view.height);
  }
  for (let latitude = Math.ceil(view.south / step) * step; latitude < view.north; latitude += step) {
    grid.moveTo(0, view.y(latitude));
    grid.lineTo(view.width, view.y(latitude));
  }
  stroke(context, grid, COLOURS.grid, 0.8 * lineUnit(view));
}

// Degrees between two lines: far enough apart to stay calm.
function gridStep(view) {
  const perDegree = view.world / 360;
  return [1, 2, 5, 10, 30].find(degrees => degrees * perDegree > 150 * view.unit) || 90;
}

// Lets the picture sink into the dark at its edges, and so to the frame of any screen.
function drawDarkEdges(context, view) {
  const reach = Math.hypot(view.width, view.height) / 2;
  const shade = context.createRadialGradient(
      view.middle.x, view.middle.y, reach * 0.45, view.middle.x, view.middle.y, reach * 1.02);
  shade.addColorStop(0, `rgba(${COLOURS.darkness}, 0)`);
  shade.addColorStop(1, `rgba(${COLOURS.darkness}, 0.62)`);
  context.fillStyle = shade;
  context.fillRect(0, 0, view.width, view.height);
}

// A fine grain that is always the same: without it the dark gradients would show steps.
function drawGrain(context, view) {
  const canvas = document.createElement("canvas");
  canvas.width = canvas.height = GRAIN_SIZE;
  const own = canvas.getContext("2d");
  const grain = own.createImageData(GRAIN_SIZE, GRAIN_SIZE);
  let random = 1;
  for (let i = 0; i < grain.data.length; i += 4) {
    random = random * 16807 % 2147483647;
    grain.data.fill(random >> 8 & 255, i, i + 3);
    grain.data[i + 3] = GRAIN_ALPHA;
  }
  own.putImageData(grain, 0, 0);
  context.fillStyle = context.createPattern(canvas, "repeat");
  context.fillRect(0, 0, view.width, view.height);
}
