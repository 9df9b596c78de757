// The rings around the quake: how far the shaking reached each level, as circles of true distance. From weak to severe
// their colours grow lighter and their lines wider.

import {SANS, stroke} from "./drawing.js";
import {placeAt} from "./geometry.js";
import {placeLabels} from "./placement.js";
import {HIDDEN_EDGE} from "./projection.js";
import {LEVELS, radiusOf} from "./shaking.js";

const STYLES = {
  severe: {colour: "255, 234, 190", width: 3},
  strong: {colour: "255, 190, 178", width: 2.6},
  moderate: {colour: "236, 152, 208", width: 2.2},
  light: {colour: "194, 140, 238", width: 1.9},
  weak: {colour: "128, 124, 236", width: 1.6},
};
const BEARING_STEP = 3;  // degrees
const LEAST_RADIUS = 1.4;  // radii of the mark
const LEAST_LINE_UNIT = 0.5;
const NAME_SIZE = 15;  // units
const NAME_ROOM = 2;
// Where a ring's name may stand, the best place first: on its upper or lower part, where the line is nearly level.
const NAME_BEARINGS = [0, 12, -12, 24, -24, 180, 168, -168, 156, -156, 36, -36, 144, -144, 48, -48, 132, -132, 60, -60];

// Whether or not a view has room for them, the largest last.
export function ringsOf(shaking) {
  return LEVELS.filter(({name}) => STYLES[name])
      .map(level => ({name: level.name, ...STYLES[level.name], radius: radiusOf(shaking, level)}))
      .filter(({radius}) => radius !== null);
}

// The ring's points in the view, and their box.
export function ringInView(view, place, ring) {
  const points = [];
  for (let bearing = 0; bearing < 360; bearing += BEARING_STEP) {
    points.push(pointInView(view, place, ring, bearing));
  }
  const [xs, ys] = [points.map(({x}) => x), points.map(({y}) => y)];
  return {...ring, place, points, box: {left: Math.min(...xs), top: Math.min(...ys),
    right: Math.max(...xs), bottom: Math.max(...ys)}};
}

function pointInView(view, place, {radius}, bearing) {
  const {latitude, longitude} = placeAt(place, radius, bearing);
  return {x: view.x(longitude), y: view.y(latitude)};
}

export function fits({box}, view, edge) {
  return box.left >= edge && box.top >= edge && box.right <= view.width && box.bottom <= view.height;
}

// Those rings that the mark leaves free: the ones that the view holds whole, and the ones that are too large for it.
export function ringsBesideMark(view, place, rings, mark) {
  const free = rings.map(ring => ringInView(view, place, ring))
      .filter(({box}) => box.right - mark.x > LEAST_RADIUS * mark.radius);
  return {inside: free.filter(ring => fits(ring, view, HIDDEN_EDGE)),
    outside: free.filter(ring => !fits(ring, view, HIDDEN_EDGE))};
}

// Largest first: each lays its own tint over what the ones around it have laid. A line leaves room for the names.
export function drawRings(context, view, rings, names = []) {
  const lineUnit = Math.max(LEAST_LINE_UNIT, view.unit);
  const beside = pathBeside(view, names);
  for (const {points, colour, width} of [...rings].reverse()) {
    const path = closedPath(points);
    context.fillStyle = `rgba(${colour}, 0.05)`;
    context.fill(path);
    context.save();
    context.clip(beside, "evenodd");
    stroke(context, path, "rgba(7, 13, 20, 0.5)", (width + 2) * lineUnit);
    stroke(context, path, `rgb(${colour})`, width * lineUnit);
    context.restore();
  }
}

// The view without the names' boxes, for the rule "evenodd".
function pathBeside({width, height}, names) {
  const path = new Path2D();
  path.rect(0, 0, width, height);
  for (const {item, x, y} of names) {
    const box = new Path2D();
    box.rect(-item.width / 2, -item.height / 2, item.width, item.height);
    path.addPath(box, new DOMMatrix().translate(x, y).rotate(item.angle * 180 / Math.PI));
  }
  return path;
}

function closedPath(points) {
  const path = new Path2D();
  points.forEach(({x, y}) => path.lineTo(x, y));
  path.closePath();
  return path;
}

// The names of those rings that have room for it beside what is taken, as labels.
export function layOutRingNames(context, view, rings, taken) {
  const bounds = {left: HIDDEN_EDGE, top: HIDDEN_EDGE, right: view.width, bottom: view.height};
  const labels = [];
  for (const ring of rings) {
    const obstacles = [...taken, ...labels.flatMap(({boxes}) => boxes)];
    const places = NAME_BEARINGS.map(bearing => nameItem(context, view, ring, bearing));
    const isRoomy = item => item.width < ring.box.right - ring.box.left;
    labels.push(...places.filter(isRoomy).flatMap(item => placeLabels([item], bounds, obstacles)).slice(0, 1));
  }
  return labels;
}

function nameItem(context, view, ring, bearing) {
  const size = NAME_SIZE * Math.max(0.8, view.unit);
  const font = `600 ${size}px ${SANS}`;
  context.font = font;
  const upright = Math.abs(bearing) > 90 ? bearing - Math.sign(bearing) * 180 : bearing;
  return {
    ...pointInView(view, ring.place, ring, bearing), lines: [ring.name], ring: ring.name, angle: upright * Math.PI / 180, font, size,
    spacing: 0.02 * size, unit: view.unit, room: NAME_ROOM * view.unit, colour: lightened(ring.colour),
    width: context.measureText(ring.name).width + size, height: size * 1.2,
  };
}

// Half way to white: a name is thinner than its line.
function lightened(colour) {
  return `rgb(${colour.split(",").map(part => Math.round((Number(part) + 255) / 2))})`;
}
