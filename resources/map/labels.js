// The names on the map: where they go, and how they are drawn.

import BASEMAP from "../basemap/vector.json" with {type: "json"};
import {HALO, pathOfCurves, stroke} from "./drawing.js";
import {labelItems} from "./names.js";
import {placeLabels} from "./placement.js";
import {HIDDEN_EDGE} from "./projection.js";
import {pathOf} from "./shapes.js";

const EDGE_MARGIN = 5;  // units between a label and the edge of the screen
const HALO_WIDTH = 4.4;  // units
const LEAST_MARK = 40 * 255;  // colour times alpha of a pixel that counts

// --- Where they go

// Those names that find a free place, and where. Obstacles are boxes by their name, "mark" among them; only towns
// and islands may cross rings and plate boundaries, where they find no better place.
export function layOutLabels(context, view, obstacles, rings) {
  const items = labelItems(view, obstacles.mark);
  const margin = EDGE_MARGIN * view.unit;
  const bounds = {left: HIDDEN_EDGE + margin, top: HIDDEN_EDGE + margin,
    right: view.width - margin, bottom: view.height - margin};
  measureItems(context, items);
  const {crosses, touchesLine} = linesOf(view, rings);
  return placeLabels(items, bounds, Object.values(obstacles).filter(Boolean), crosses, touchesLine);
}

function measureItems(context, items) {
  const widths = new Map();  // names along a line come many times
  for (const item of items) {
    const key = item.font + item.lines;
    if (!widths.has(key)) {
      context.font = item.font;
      context.letterSpacing = item.spacing + "px";
      widths.set(key, Math.max(...item.lines.map(line => context.measureText(line).width)));
    }
    item.width = widths.get(key) + 2 * item.unit;
    item.height = item.size * 1.2 * item.lines.length;
  }
  context.letterSpacing = "0px";
}

// Questions for boxes: is there land, a plate boundary or a ring in it (crosses), or one of the last two (touchesLine)? A
// small picture gives the answer, the land in red and the lines in green.
function linesOf(view, rings) {
  const grain = Math.max(4, view.unit * 4);  // CSS pixels to one of the picture
  const canvas = document.createElement("canvas");
  canvas.width = Math.ceil(view.width / grain);
  canvas.height = Math.ceil(view.height / grain);
  const context = canvas.getContext("2d", {willReadFrequently: true});
  context.scale(1 / grain, 1 / grain);
  context.globalCompositeOperation = "lighter";
  const coast = pathOf(view, BASEMAP.land, grain, true);
  context.fillStyle = "#f00";
  context.fill(coast);
  stroke(context, coast, "#f00", grain);
  for (const lines of Object.values(BASEMAP.plates)) {
    stroke(context, pathOf(view, lines, grain), "#0f0", grain);
  }
  stroke(context, pathOfCurves(rings.map(({points}) => [...points, points[0]])), "#0f0", grain);
  const image = context.getImageData(0, 0, canvas.width, canvas.height);
  return {
    crosses: box => isMarked(image, box, grain, 0) || isMarked(image, box, grain, 1),
    touchesLine: box => isMarked(image, box, grain, 1),
  };
}

function isMarked({data, width, height}, box, grain, channel) {
  const right = Math.min(width - 1, Math.ceil(box.right / grain));
  const bottom = Math.min(height - 1, Math.ceil(box.bottom / grain));
  for (let y = Math.max(0, Math.floor(box.top / grain)); y <= bottom; ++y) {
    for (let x = Math.max(0, Math.floor(box.left / grain)); x <= right; ++x) {
      if (data[(y * width + x) * 4 + channel] * data[(y * width + x) * 4 + 3] > LEAST_MARK) {
        return true;
      }
    }
  }
  return false;
}

// --- How they are drawn

export function drawLabels(context, labels) {
  context.textBaseline = "middle";
  context.textAlign = "left";
  context.lineJoin = "round";
  for (const {item, x, y, leader} of labels) {
    if (leader) {
      drawLeader(context, leader, item);
    }
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
    context.lineWidth = HALO_WIDTH * item.unit;
    context.strokeStyle = HALO;
    context.strokeText(line, left, middle);
    context.fillStyle = item.colour;
    context.fillText(line, left, middle);
  });
  context.restore();
}

// From a place that the mark covers to its name.
function drawLeader(context, [from, to], {colour, unit}) {
  const line = new Path2D();
  line.moveTo(from.x, from.y);
  line.lineTo(to.x, to.y);
  stroke(context, line, HALO, 3.4 * unit);
  stroke(context, line, colour, 1.2 * unit);
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
