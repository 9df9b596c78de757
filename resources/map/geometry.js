// Angles and distances on the earth, and boxes {left, top, right, bottom} on the screen.

export const EARTH_RADIUS = 6371;  // kilometres

export function radians(degrees) {
  return degrees * Math.PI / 180;
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
  return (Math.atan2(east, north) * 180 / Math.PI + 360) % 360;
}

export function boxesMeet(one, other) {
  return one.left < other.right && one.right > other.left && one.top < other.bottom && one.bottom > other.top;
}
