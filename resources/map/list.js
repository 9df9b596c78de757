// The list that the quake comes from: up to ten earthquakes in the order in which they are shown.

import {wrapLongitude} from "./projection.js";

const SAME_PLACE = 0.002;  // degrees; the page is told its quake's numbers with fewer decimals
const SAME_SIZE = 0.056;  // magnitudes and kilometres

// The list as the bundle's script gives it and the quake's index in it; null if the script gave no list. An index of -1 is a
// quake that it does not hold.
export function listOf(quake, earthquakes) {
  if (!earthquakes || !Array.isArray(earthquakes.shown)) {
    return null;
  }
  const {shown} = earthquakes;
  return {...earthquakes, index: shown.findIndex(other => isSame(quake, other))};
}

function isSame({place, magnitude, depth}, other) {
  return agrees(place && place.latitude, other.latitude, SAME_PLACE) &&
      agrees(place && place.longitude, wrapLongitude(other.longitude), SAME_PLACE) &&
      agrees(magnitude, other.magnitude, SAME_SIZE) && agrees(depth, other.depth, SAME_SIZE);
}

// A number that the page does not know, or does not believe, agrees with any.
function agrees(own, other, tolerance) {
  return own === null || other !== null && Math.abs(own - other) <= tolerance;
}

// How many of the list are bigger by what is shown of their magnitudes, and one; null for a quake without one.
export function rankOf(quake, {shown}) {
  return quake.magnitude === null ? null : 1 + shown.filter(({magnitude}) => asShown(magnitude) > quake.magnitude).length;
}

// A magnitude is judged as it is shown: 6.96 is 7.0.
export function asShown(magnitude) {
  return Number.isFinite(magnitude) ? Number(magnitude.toFixed(1)) : null;
}
