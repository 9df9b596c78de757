// The scale bar, above bottom and at the side where the credit stands.

import {BACKING, HALO, SANS, fillBox} from "./drawing.js";
import {EARTH_RADIUS, radians} from "./geometry.js";
import {HIDDEN_EDGE, latitudeAt} from "./projection.js";

const MARGIN = 22;  // units
const LONGEST = 130;  // units
const TEXT_SIZE = 16;
const LEAST_UNIT = 0.5;  // of a view that has one

export function createScale(view, bottom, {isMirrored, x}) {
  if (view.unit < LEAST_UNIT) {
    return null;
  }
  const perKilometre = view.world / (2 * Math.PI * EARTH_RADIUS * Math.cos(radians(middleLatitude(view))));
  const kilometres = roundLength(LONGEST * view.unit / perKilometre);
  const length = kilometres * perKilometre;
  const margin = (MARGIN + x) * view.unit;
  const right = isMirrored ? HIDDEN_EDGE + margin + length : view.width - margin;
  return {kilometres, length, right, bottom,
    box: {left: right - length - 4 * view.unit, top: bottom - 28 * view.unit, right: right + 4 * view.unit, bottom}};
}

function middleLatitude(view) {
  return latitudeAt((view.middle.y + view.top) / view.world);
}

// The largest of 1, 2, 5, 10, 20 ... that is not above most.
function roundLength(most) {
  const power = 10 ** Math.floor(Math.log10(most));
  return [5, 2, 1].find(digit => digit * power <= most) * power;
}

export function drawScale(context, view, {kilometres, length, right, bottom, box}) {
  const unit = view.unit;
  const y = bottom - 4 * unit;
  fillBox(context, box, BACKING);
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
  context.font = `${TEXT_SIZE * unit}px ${SANS}`;
  context.textAlign = "center";
  context.textBaseline = "alphabetic";
  context.lineWidth = 3 * unit;
  context.strokeStyle = HALO;
  context.strokeText(`${kilometres} km`, right - length / 2, y - 7 * unit);
  context.fillStyle = "rgba(226, 236, 240, 0.9)";
  context.fillText(`${kilometres} km`, right - length / 2, y - 7 * unit);
}
