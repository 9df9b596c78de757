// Angles and distances on the earth, and boxes {left, top, right, bottom} on the screen.

export const EARTH_RADIUS = 6371;  // kilometres

export function radians(degrees) {
  return degrees * Math.PI / 180;
}

function degrees(angle) {
  return angle * 180 / Math.PI;
}

// Along the great circle, in kilometres.
export function distanceBetween(from, to) {
  const halfLatitude = Math.sin(radians(to.latitude - from.latitude) / 2);
  const halfLongitude = Math.sin(radians(to.longitude - from.longitude) / 2);
  const part = halfLatitude ** 2 +
      Math.cos(radians(from.latitude)) * Math.cos(radians(to.latitude)) * halfLongitude ** 2;
  return 2 * EARTH_RADIUS * Math.asin(Math.sqrt(Math.min(1, part)));
}

// Clockwise from north, in degrees.
export function bearingBetween(from, to) {
  const turn = radians(to.longitude - from.longitude);
  const east = Math.sin(turn) * Math.cos(radians(to.latitude));
  const north = Math.cos(radians(from.latitude)) * Math.sin(radians(to.latitude)) -
      Math.sin(radians(from.latitude)) * Math.cos(radians(to.latitude)) * Math.cos(turn);
  return (degrees(Math.atan2(east, north)) + 360) % 360;
}

// The place so many kilometres from another one; its longitude may lie beyond 0 or 360.
export function placeAt({latitude, longitude}, distance, bearing) {
  const angle = distance / EARTH_RADIUS;
  const sine = Math.sin(radians(latitude)) * Math.cos(angle) +
      Math.cos(radians(latitude)) * Math.sin(angle) * Math.cos(radians(bearing));
  const east = Math.sin(radians(bearing)) * Math.sin(angle) * Math.cos(radians(latitude));
  const turn = Math.atan2(east, Math.cos(angle) - Math.sin(radians(latitude)) * sine);
  return {latitude: degrees(Math.asin(sine)), longitude: longitude + degrees(turn)};
}

export function boxesMeet(one, other) {
  return one.left < other.right && one.right > other.left && one.top < other.bottom && one.bottom > other.top;
}
