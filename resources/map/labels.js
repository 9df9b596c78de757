// The names on the map: which there are, and how each looks. Sizes are in units of the view.

import BASEMAP from "../basemap/vector.json" with {type: "json"};
import {HALO, SANS, SERIF, pathOf} from "./drawing.js";
import {radians} from "./geometry.js";
import {placeLabels} from "./placement.js";
import {HIDDEN_EDGE} from "./projection.js";

const SMALLEST_TEXT_UNIT = 0.8;
const EDGE_MARGIN = 5;  // units between a label and the edge of the screen

// First match by people. The dot's radius stands beside the size.
const TOWN_STYLES = [
  [300000, {weight: 600, size: 19, dot: 4.2, colour: "#ffffff"}],
  [100000, {weight: 600, size: 16.5, dot: 3.7, colour: "#f6f8f6"}],
  [30000, {weight: 600, size: 14, dot: 3.1, colour: "#eceff0"}],
  [9000, {weight: 400, size: 13.5, dot: 2.7, colour: "rgba(230, 235, 234, 0.95)"}],
  [2500, {weight: 400, size: 12.5, dot: 2.3, colour: "rgba(222, 228, 228, 0.9)"}],
  [0, {weight: 400, size: 12, dot: 2, colour: "rgba(208, 216, 216, 0.82)"}],
];

// By the label's kind: the sizes by rank (the last one for all further ranks), priority (lower goes first).
const NAME_STYLES = {
  sea: {serif: true, sizes: [25, 20, 17, 14.5], spacing: 0.22, colour: "rgba(158, 198, 224, 0.66)", priority: 20, sea: true},
  trench: {serif: true, sizes: [17, 15], spacing: 0.14, colour: "rgba(150, 190, 220, 0.8)", priority: 21, sea: true},
  rise: {serif: true, sizes: [17, 15], spacing: 0.14, colour: "rgba(170, 204, 220, 0.66)", priority: 25, sea: true},
  area: {weight: 600, sizes: [17], spacing: 0.3, colour: "rgba(232, 236, 228, 0.5)", priority: 9, capitals: true},
  area3: {weight: 600, sizes: [13], spacing: 0.28, colour: "rgba(232, 236, 228, 0.46)", priority: 30, capitals: true},
  range: {italic: true, sizes: [13], spacing: 0.12, colour: "rgba(232, 236, 228, 0.5)", priority: 24},
  island: {sizes: [15, 13.5, 12.5], spacing: 0.02, colour: "rgba(226, 234, 234, 0.92)", priority: 11, halo: true, offset: 8},
  cape: {sizes: [12], spacing: 0.02, colour: "rgba(204, 218, 222, 0.74)", priority: 30, halo: true, offset: 5},
  peak: {sizes: [12.5], spacing: 0.02, colour: "rgba(236, 236, 230, 0.85)", priority: 17, halo: true, offset: 7, symbol: "peak"},
  lake: {serif: true, sizes: [13.5], spacing: 0.04, colour: "rgba(160, 204, 228, 0.9)", priority: 27, halo: true},
  volcano: {sizes: [12.5], spacing: 0.02, colour: "rgba(255, 196, 160, 0.88)", priority: 16, halo: true, offset: 8, symbol: "volcano"},
  seamount: {sizes: [12], spacing: 0.02, colour: "rgba(240, 180, 158, 0.75)", priority: 31, halo: true, offset: 8, symbol: "seamount"},
};
const SYMBOL_SIZE = 4.6;

// --- Which names there are

// Those names that find a free place, and where.
export function layOutLabels(context, view, obstacles) {
  const items = labelItems(view);
  const margin = EDGE_MARGIN * view.unit;
  const bounds = {left: HIDDEN_EDGE + margin, top: HIDDEN_EDGE + margin,
    right: view.width - margin, bottom: view.height - margin};
  measureItems(context, items);
  return placeLabels(items, bounds, Object.values(obstacles).filter(Boolean), landFinder(view));
}

// All names that can be seen, the most important first.
function labelItems(view) {
  const unit = Math.max(SMALLEST_TEXT_UNIT, view.unit);
  return [...BASEMAP.places.map(place => townItem(unit, place)), ...BASEMAP.labels.map(label => nameItem(unit, label)),
    ...volcanoItems(unit)]
      .map(item => ({...item, x: view.x(item.longitude), y: view.y(item.latitude)}))
      .filter(({x, y}) => x > HIDDEN_EDGE && x < view.width && y > HIDDEN_EDGE && y < view.height)
      .sort((one, other) => one.priority - other.priority);
}

function townItem(unit, [name, people, longitude, latitude]) {
  const {weight, size, dot, colour} = TOWN_STYLES.find(([least]) => people >= least)[1];
  return {
    lines: [name], longitude, latitude, colour, halo: true, unit,
    font: `${weight} ${size * unit}px ${SANS}`, size: size * unit, spacing: 0.01 * size * unit,
    priority: 10 - Math.log10(people + 10), offset: (dot + 4) * unit, symbol: "dot", symbolSize: dot * unit,
  };
}

function nameItem(unit, [name, kind, rank, angle, longitude, latitude]) {
  const style = NAME_STYLES[kind];
  const size = style.sizes[Math.min(rank, style.sizes.length) - 1] * unit;
  const slant = style.serif || style.italic ? "italic " : "";
  return {
    lines: (style.capitals ? name.replace(/^.*/, line => line.toUpperCase()) : name).split("\n"),
    longitude, latitude, angle: radians(angle), unit, size, spacing: style.spacing * size,
    font: `${slant}${style.weight || 400} ${size}px ${style.serif ? SERIF : SANS}`,
    colour: style.colour, halo: style.halo, sea: style.sea, priority: style.priority + rank,
    offset: (style.offset || 0) * unit, symbol: style.symbol, symbolSize: SYMBOL_SIZE * unit,
  };
}

// Volcanoes that bear the name of an island, a mountain or a town on the map are left to it.
function volcanoItems(unit) {
  const named = new Set([...BASEMAP.labels, ...BASEMAP.places].map(([name]) => name));
  return BASEMAP.volcanoes.filter(([name]) => !named.has(name)).map(([name, isUnderSea, longitude, latitude]) =>
      nameItem(unit, [name, isUnderSea ? "seamount" : "volcano", 1, 0, longitude, latitude]));
}

function measureItems(context, items) {
  for (const item of items) {
    context.font = item.font;
    context.letterSpacing = item.spacing + "px";
    item.width = Math.max(...item.lines.map(line => context.measureText(line).width)) + (item.halo ? 2 * item.unit : 0);
    item.height = item.size * 1.2 * item.lines.length;
  }
}

// A question for boxes: is there land or a plate boundary in it? A small picture of both gives the answer.
function landFinder(view) {
  const grain = Math.max(4, view.unit * 4);  // CSS pixels to one of the picture
  const canvas = document.createElement("canvas");
  canvas.width = Math.ceil(view.width / grain);
  canvas.height = Math.ceil(view.height / grain);
  const context = canvas.getContext("2d", {willReadFrequently: true});
  context.scale(1 / grain, 1 / grain);
  const coast = pathOf(view, BASEMAP.land, 0.5 / grain, true);
  context.fill(coast);
  context.lineWidth = grain;
  context.stroke(coast);
  for (const lines of Object.values(BASEMAP.plates)) {
    context.stroke(pathOf(view, lines, 0.5 / grain));
  }
  const {data, width, height} = context.getImageData(0, 0, canvas.width, canvas.height);
  return box => {
    const right = Math.min(width - 1, Math.ceil(box.right / grain));
    const bottom = Math.min(height - 1, Math.ceil(box.bottom / grain));
    for (let y = Math.max(0, Math.floor(box.top / grain)); y <= bottom; ++y) {
      for (let x = Math.max(0, Math.floor(box.left / grain)); x <= right; ++x) {
        if (data[(y * width + x) * 4 + 3] > 40) {
          return true;
        }
      }
    }
    return false;
  };
}

// --- How it looks

export function drawLabels(context, labels) {
  context.textBaseline = "middle";
  context.textAlign = "left";
  context.lineJoin = "round";
  for (const {item, x, y} of labels) {
    if (item.symbol) {
      drawSymbol(context, item);
    }
    drawName(context, item, x, y);
  }
  context.letterSpacing = "0px";
}

function drawName(context, item, x, y) {
  context.save();
  context.translate(x, y);
  context.rotate(item.angle || 0);
  context.font = item.font;
  context.letterSpacing = item.spacing + "px";
  item.lines.forEach((line, i) => {
    const left = -context.measureText(line).width / 2 + (item.lines.length > 1 ? item.spacing / 2 : 0);
    const middle = (i - (item.lines.length - 1) / 2) * item.size * 1.2;
    if (item.halo) {
      context.lineWidth = 3 * item.unit;
      context.strokeStyle = HALO;
      context.strokeText(line, left, middle);
    }
    context.fillStyle = item.colour;
    context.fillText(line, left, middle);
  });
  context.restore();
}

function drawSymbol(context, {x, y, symbol, symbolSize, unit}) {
  context.beginPath();
  if (symbol === "dot") {
    context.arc(x, y, symbolSize, 0, 2 * Math.PI);
  } else {
    const size = symbol === "peak" ? symbolSize * 0.8 : symbolSize;
    context.moveTo(x, y - size);
    context.lineTo(x + size, y + size * 0.75);
    context.lineTo(x - size, y + size * 0.75);
    context.closePath();
  }
  context.lineWidth = 1.4 * unit;
  context.strokeStyle = symbol === "seamount" ? "rgba(246, 160, 128, 0.9)" : "rgba(7, 13, 20, 0.85)";
  context.stroke();
  if (symbol !== "seamount") {
    context.fillStyle = {dot: "#f2f5f2", peak: "#e6ebee", volcano: "#ff8f5e"}[symbol];
    context.fill();
  }
}
