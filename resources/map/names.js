// The names that the map can show, as items for their layout: which there are, how each looks, and how much it matters.
// Sizes are in units of the view.

import BASEMAP from "../basemap/vector.json" with {type: "json"};
import {SANS, SERIF} from "./drawing.js";
import {boxesMeet, radians} from "./geometry.js";
import {namedPlaces, nearestPlace} from "./places.js";
import {HIDDEN_EDGE, isInRegion} from "./projection.js";

const SMALLEST_TEXT_UNIT = 0.8;
const LEAST_ROOM = 4;  // around a name
const USUAL_WORLD = 65536;  // CSS pixels of the world, where the towns' names lie loosely
const MOST_COVERED = 3;

// First match by people. The dot's radius and the room around stand beside the size.
const TOWN_STYLES = [
  [300000, {weight: 600, size: 19, dot: 4.2, room: 0, colour: "#ffffff"}],
  [100000, {weight: 600, size: 16.5, dot: 3.7, room: 0, colour: "#f6f8f6"}],
  [30000, {weight: 600, size: 14, dot: 3.1, room: 0, colour: "#eff2f3"}],
  [9000, {weight: 400, size: 13.5, dot: 2.7, room: 4, colour: "#e9edec"}],
  [2500, {weight: 400, size: 12.5, dot: 2.3, room: 8, colour: "#e3e8e8"}],
  [0, {weight: 400, size: 12, dot: 2, room: 14, colour: "#dde3e3"}],
];

// By the label's kind: the sizes by rank (the last one for all further ranks), priority (lower goes first). A name of
// the sea may stray so many heights from its place to keep off the land; one of a line stands so many heights beside it.
const NAME_STYLES = {
  sea: {serif: true, sizes: [25, 20, 17, 14.5], spacing: 0.22, colour: "#b8d9ed", priority: 20, sea: true, stray: 4},
  strait: {serif: true, sizes: [17, 17, 17, 14.5], spacing: 0.16, colour: "#b8d9ed", priority: 17, sea: true, stray: 0.8},
  bay: {serif: true, sizes: [13.5], spacing: 0.06, colour: "#b8d9ed", priority: 18, sea: true, offset: 4},
  trench: {serif: true, sizes: [17, 15], spacing: 0.14, colour: "#b8d9ed", priority: 26, sea: true, stray: 3},
  rise: {serif: true, sizes: [17, 15], spacing: 0.14, colour: "#c4dde8", priority: 25, sea: true, stray: 3},
  line: {serif: true, sizes: [17], spacing: 0.14, colour: "#9fe8d2", priority: 19, sea: true, beside: [1, 1.5]},
  fault: {italic: true, sizes: [14], spacing: 0.1, colour: "#9fe8d2", priority: 16, beside: [0.9, -0.9, 1.4, -1.4]},
  plate: {sizes: [13.5], spacing: 0.24, colour: "#9fe8d2", priority: 23, sea: true, capitals: true,
    beside: [2.4, 3.6, 5, 7, 9]},
  area: {weight: 600, sizes: [17], spacing: 0.3, colour: "#d5dcd2", priority: 9, capitals: true},
  area3: {weight: 600, sizes: [13], spacing: 0.28, colour: "#d5dcd2", priority: 30, capitals: true},
  range: {italic: true, sizes: [13], spacing: 0.12, colour: "#d5dcd2", priority: 24},
  island: {sizes: [15, 13.5, 12.5], spacing: 0.02, colour: "#e6eded", priority: 11, offset: 8, isPlace: true},
  cape: {sizes: [12], spacing: 0.02, colour: "#dbe5e8", priority: 30, offset: 5},
  peak: {sizes: [12.5], spacing: 0.02, colour: "#ecece6", priority: 17, offset: 7, symbol: "peak"},
  lake: {serif: true, sizes: [13.5], spacing: 0.04, colour: "#c2e3f4", priority: 27},
  volcano: {sizes: [12.5], spacing: 0.02, colour: "#ffc9a6", priority: 16, offset: 8, symbol: "volcano"},
  seamount: {sizes: [12], spacing: 0.02, colour: "#f4c0aa", priority: 31, offset: 8, symbol: "seamount"},
};
const SYMBOL_SIZE = 4.6;

// All names in the view, the most important first and of several of one name the nearest to the middle. mark is the
// box of the quake's mark, if it has one.
export function labelItems(view, mark) {
  const unit = Math.max(SMALLEST_TEXT_UNIT, view.unit);
  const crowd = Math.min(Math.max(unit * USUAL_WORLD / view.world - 1, 0), 2);
  const isSeen = entry => {
    const [x, y] = [view.x(entry.at(-2)), view.y(entry.at(-1))];
    return x > HIDDEN_EDGE && x < view.width && y > HIDDEN_EDGE && y < view.height;
  };
  const items = [...BASEMAP.places.filter(isSeen).filter(isOnMap).map(place => townItem(unit, crowd, place)),
    ...BASEMAP.labels.filter(isSeen).map(label => nameItem(unit, label)),
    ...volcanoes().filter(isSeen).map(volcano => volcanoItem(unit, volcano))]
      .map(item => ({...item, x: view.x(item.longitude), y: view.y(item.latitude)}));
  const fromMiddle = ({x, y}) => Math.hypot(x - view.middle.x, y - view.middle.y);
  items.sort((one, other) => one.priority - other.priority || fromMiddle(one) - fromMiddle(other));
  return mark ? withStruck(items, view.place, mark) : items;
}

// Beyond the region nothing is drawn around a town.
function isOnMap([, , longitude, latitude]) {
  return isInRegion({longitude, latitude});
}

// The place that the quake is named after goes first, but not onto a city. The mark must not hide it, nor the towns and
// islands under it.
function withStruck(items, place, mark) {
  const nearest = nearestPlace(place, namedPlaces());
  const named = items.find(({lines}) => nearest && lines[0] === nearest.name);
  const covered = items.filter(item => item.isPlace && boxesMeet(mark, dotOf(item))).slice(0, MOST_COVERED);
  const others = items.filter(item => item !== named).map(item => covered.includes(item) ? {...item, mark, room: 0} : item);
  const cities = others.filter(({weight}) => weight > 400);
  return named ? [{...named, mark, room: 0, avoid: cities.map(dotOf)}, ...others] : others;
}

function dotOf({x, y, symbolSize: size}) {
  return {left: x - size, top: y - size, right: x + size, bottom: y + size};
}

// Where the map is small beside its texts, lesser towns want more room around their names.
function townItem(unit, crowd, [name, people, longitude, latitude]) {
  const {weight, size, dot, colour, room} = TOWN_STYLES.find(([least]) => people >= least)[1];
  return {
    lines: [name], longitude, latitude, colour, weight, unit,
    font: `${weight} ${size * unit}px ${SANS}`, size: size * unit, spacing: 0.01 * size * unit,
    priority: 10 - Math.log10(people + 10), offset: (dot + 4) * unit, symbol: "dot", symbolSize: dot * unit, isPlace: true,
    room: Math.max(LEAST_ROOM, room * crowd) * unit,
  };
}

function nameItem(unit, [name, kind, rank, angle, longitude, latitude]) {
  const style = NAME_STYLES[kind];
  const size = style.sizes[Math.min(rank, style.sizes.length) - 1] * unit;
  const slant = style.serif || style.italic ? "italic " : "";
  return {
    lines: (style.capitals ? name.replace(/^.*/, line => line.toUpperCase()) : name).split("\n"),
    longitude, latitude, ...slope(radians(angle), style.beside), unit, size, spacing: style.spacing * size,
    font: `${slant}${style.weight || 400} ${size}px ${style.serif ? SERIF : SANS}`,
    colour: style.colour, sea: style.sea, priority: style.priority + rank,
    offset: (style.offset || 0) * unit, stray: style.stray, symbol: style.symbol, symbolSize: SYMBOL_SIZE * unit,
    isPlace: style.isPlace, room: LEAST_ROOM * unit,
  };
}

// A name beside a line stands at the left of the line's direction; the text itself never stands on its head.
function slope(direction, beside) {
  const isUpsideDown = Math.cos(direction) < 0;
  return {
    angle: isUpsideDown ? direction - Math.sign(direction) * Math.PI : direction,
    beside: beside && beside.map(heights => [heights * Math.sin(direction), -heights * Math.cos(direction)]),
  };
}

// Volcanoes that bear the name of an island, a mountain or a town on the map are left to it.
function volcanoes() {
  const named = new Set([...BASEMAP.labels, ...BASEMAP.places].map(([name]) => name));
  return BASEMAP.volcanoes.filter(([name]) => !named.has(name));
}

export function isVolcano({symbol}) {
  return symbol === "volcano" || symbol === "seamount";
}

function volcanoItem(unit, [name, isUnderSea, longitude, latitude]) {
  return nameItem(unit, [name, isUnderSea ? "seamount" : "volcano", 1, 0, longitude, latitude]);
}
