// Web Mercator in parts of the world: x and y run from 0 to 1. Longitudes run from 0 to 360, so 180 is a line like
// any other.

export const HIDDEN_EDGE = 10;  // CSS pixels at the left and at the top that lie outside the screen
const TILE_SIZE = 256;  // CSS pixels of the world at zoom 0
const USUAL_SIZE = 960;  // CSS pixels, square root of the area where one unit is one pixel: 1280 x 720
const SMALLEST_USUAL_UNIT = 0.55;  // on a smaller screen the map shrinks with it
const WIDEST_AT_ZOOM = 3850;  // CSS pixels; a larger screen enlarges the map, for the data reach no further
const SMALL = 0.5;  // unit of a view below which the panel is a strip
const SHAPES = [{least: 1.4, name: "wide"}, {least: 0.85, name: "square"}, {least: 0, name: "high"}];  // width to height
const TEXT_SCREEN = {width: 617, height: 720};  // CSS pixels; letters grow with the side that is shorter beside these
const LOWER_PANEL = {square: 250, high: 326, credit: 50, mostPart: 0.42};  // letter units, map units, part of the height
export const REGION = {west: 149, east: 202, south: -64, north: -13.5};

export function wrapLongitude(longitude) {
  return ((longitude % 360) + 360) % 360;
}

export function mercatorX(longitude) {
  return longitude / 360;
}

export function mercatorY(latitude) {
  const sine = Math.sin(Math.min(Math.max(latitude, -85), 85) * Math.PI / 180);
  return 0.5 - Math.log((1 + sine) / (1 - sine)) / (4 * Math.PI);
}

export function latitudeAt(y) {
  return Math.atan(Math.sinh(Math.PI * (1 - 2 * y))) * 180 / Math.PI;
}

export function isInRegion(place) {
  return place.longitude >= REGION.west && place.longitude <= REGION.east &&
      place.latitude >= REGION.south && place.latitude <= REGION.north;
}

// What the page shows: lengths in CSS pixels, edges in degrees. The quake stands in the middle of what the panel leaves
// free.
export function createView(width, height, place, zoom) {
  const screen = screenOf(width, height);
  const middle = {x: (width + HIDDEN_EDGE) / 2, y: (height - screen.lowerPanel + HIDDEN_EDGE) / 2};
  const world = TILE_SIZE * 2 ** zoom * enlargement(width, height, screen.unit);
  return {...createViewAt(width, height, screen.unit, middle, place || middleOfRegion(), world), ...screen};
}

// Every line and name grows with the unit, the panel's letters with text. The panel takes a corner of a wide screen, and
// lowerPanel pixels at the foot of a square or a high one.
function screenOf(width, height) {
  const unit = Math.sqrt(width * height) / USUAL_SIZE;
  const text = Math.min(width / TEXT_SCREEN.width, height / TEXT_SCREEN.height);
  const shape = unit < SMALL ? "small" : SHAPES.find(({least}) => width > least * height).name;
  const panel = LOWER_PANEL[shape] * text + LOWER_PANEL.credit * unit;
  return {unit, text, shape, lowerPanel: LOWER_PANEL[shape] ? Math.min(panel, LOWER_PANEL.mostPart * height) : 0};
}

function enlargement(width, height, unit) {
  return unit < SMALLEST_USUAL_UNIT ? Math.max(0.3, unit / SMALLEST_USUAL_UNIT) :
      Math.max(1, Math.max(width, height) / WIDEST_AT_ZOOM);
}

export function createViewAt(width, height, unit, middle, place, world) {
  const left = mercatorX(place.longitude) * world - middle.x;
  const top = mercatorY(place.latitude) * world - middle.y;
  return {
    width, height, unit, middle, place, world, left, top,
    west: left / world * 360,
    east: (left + width) / world * 360,
    north: latitudeAt(top / world),
    south: latitudeAt((top + height) / world),
    x: longitude => mercatorX(longitude) * world - left,
    y: latitude => mercatorY(latitude) * world - top,
  };
}

function middleOfRegion() {
  return {latitude: -41.3, longitude: 174};
}
