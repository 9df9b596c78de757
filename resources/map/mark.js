// The mark of the quake: a white point at the place itself in a disc to see through, whose size and colour tell the
// magnitude.

import {fillCircle} from "./drawing.js";

const MAGNITUDE_COLOURS = [[8, "255, 58, 110"], [7, "255, 74, 66"], [6, "255, 122, 56"], [5, "255, 172, 62"],
  [4, "255, 214, 104"], [-Infinity, "222, 232, 150"]];
const UNKNOWN_COLOUR = "206, 220, 228";
const LARGEST_PART = 0.1;  // of the smaller side
const LEAST_POINT = 1.6;  // CSS pixels

export function markColour(magnitude) {
  return magnitude === null ? UNKNOWN_COLOUR : MAGNITUDE_COLOURS.find(([least]) => magnitude >= least)[1];
}

export function createMark(view, quake) {
  const strength = quake.magnitude === null ? 4.5 : Math.min(Math.max(quake.magnitude, 2), 9.5);
  return {
    x: view.middle.x,
    y: view.middle.y,
    radius: Math.min((4.5 + 0.26 * strength ** 2) * Math.max(0.4, view.unit),
        LARGEST_PART * Math.min(view.width, view.height)),
    unit: Math.max(0.55, view.unit),
    colour: markColour(quake.magnitude),
  };
}

export function boxOfMark(mark) {
  const reach = mark.radius + 2 * mark.unit;
  return {left: mark.x - reach, top: mark.y - reach, right: mark.x + reach, bottom: mark.y + reach};
}

export function drawMark(context, mark) {
  fillCircle(context, mark, mark.radius, `rgba(${mark.colour}, 0.2)`);
  drawOutline(context, mark, 5, "rgba(6, 10, 16, 0.55)");
  drawOutline(context, mark, 2.6, `rgb(${mark.colour})`);
  drawPoint(context, mark);
}

function drawOutline(context, mark, width, colour) {
  context.beginPath();
  context.arc(mark.x, mark.y, mark.radius, 0, 2 * Math.PI);
  context.lineWidth = width * mark.unit;
  context.strokeStyle = colour;
  context.stroke();
}

function drawPoint(context, mark) {
  const size = Math.max(LEAST_POINT, Math.min(4 * mark.unit, mark.radius * 0.3));
  fillCircle(context, mark, size * 1.6, "rgba(8, 10, 14, 0.55)");
  fillCircle(context, mark, size, "#fff");
}
