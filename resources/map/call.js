// What the page is told: the call in the body's onload attribute, and the quake that is made of it.

import {EARTH_RADIUS} from "./geometry.js";
import {asShown} from "./list.js";
import {wrapLongitude} from "./projection.js";

const HIGHEST_GROUND = 10;  // kilometres above the sea
const LARGEST_MAGNITUDE = 15;  // far above any that can be; a number beyond it is a mistake
const LONGEST_DATE = 60;  // characters
const USUAL_ZOOM = 8;

// A value that is not known is null; the date is then empty.
export function quakeFrom(latitude, longitude, magnitude, depthText, dateText, zoom) {
  return {
    place: placeFrom(latitude, longitude),
    magnitude: Math.abs(magnitude) <= LARGEST_MAGNITUDE ? asShown(magnitude) : null,
    depth: depthFrom(depthText),
    date: dateFrom(dateText),
    zoom: Number.isFinite(zoom) ? Math.min(Math.max(zoom, 0), 12) : USUAL_ZOOM,
  };
}

// Reads the call itself, for the time before it runs, and for the case that a quote in the date breaks it.
export function quakeFromCall(text) {
  const parts = /initializeMap\(([^,]*),([^,]*),([^,]*),\s*'([^']*)'?,\s*'([\s\S]*?)(?:',\s*(\d+)\)\s*$|$)/.exec(text);
  if (!parts) {
    return quakeFrom(NaN, NaN, NaN, "", "", USUAL_ZOOM);
  }
  const [latitude, longitude, magnitude] = parts.slice(1, 4).map(Number);
  return quakeFrom(latitude, longitude, magnitude, parts[4], parts[5], Number(parts[6] || USUAL_ZOOM));
}

function placeFrom(latitude, longitude) {
  if (!Number.isFinite(longitude) || !(Math.abs(latitude) <= 90)) {
    return null;
  }
  return {latitude: latitude, longitude: wrapLongitude(longitude)};
}

function depthFrom(text) {
  const match = /^\s*(-?\d+(?:\.\d+)?)\s*km\s*$/.exec(text);
  const depth = match ? Number(match[1]) : NaN;
  return depth >= -HIGHEST_GROUND && depth <= EARTH_RADIUS ? depth : null;
}

function dateFrom(text) {
  const date = typeof text === "string" ? text.trim() : "";
  if (/^[-+]?(nan|inf|undefined|null)/i.test(date)) {
    return "";
  }
  return date.length > LONGEST_DATE ? date.slice(0, LONGEST_DATE) + "…" : date;
}
