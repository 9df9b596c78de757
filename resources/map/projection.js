// Web Mercator in parts of the world: x and y run from 0 to 1. Longitudes run from 0 to 360, so 180 is a line like
// any other.

export const HIDDEN_EDGE = 10;  // CSS pixels at the left and at the top that lie outside the screen
const TILE_SIZE = 256;  // CSS pixels of the world at zoom 0
const USUAL_SIZE = 960;  // CSS pixels, square root of the area where one unit is one pixel: 1280 x 720
const SMALLEST_USUAL_UNIT = 0.55;  // on a smaller screen the map shrinks with it
const WIDEST_AT_ZOOM = 3850;  // CSS pixels; a larger screen enlarges the map, for the data reach no further
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

// What the page shows: lengths in CSS pixels, edges in degrees. Every text and line grows with the unit.
export function createView(width, height, place, zoom) {
  const unit = Math.sqrt(width * height) / USUAL_SIZE;
  const enlarged = Math.max(width, height) / WIDEST_AT_ZOOM;
  const scale = unit < SMALLEST_USUAL_UNIT ? Math.max(0.3, unit / SMALLEST_USUAL_UNIT) : Math.max(1, enlarged);
  const middle = {x: (width + HIDDEN_EDGE) / 2, y: (height + HIDDEN_EDGE) / 2};
  return createViewAt(width, height, unit, middle, place || middleOfRegion(), TILE_SIZE * 2 ** zoom * scale);
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
