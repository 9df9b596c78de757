// The shaking that people on the ground are likely to have felt, on the Modified Mercalli scale: an estimate from
// magnitude, depth and distance, as GeoNet publishes it (after Dowrick and Rhoades, 2005). Depths and distances are in
// kilometres.

import {distanceBetween} from "./geometry.js";

// From the strongest down. What is below the last level is not felt.
export const LEVELS = [
  {least: 8, name: "extreme"},
  {least: 7, name: "severe"},
  {least: 6, name: "strong"},
  {least: 5, name: "moderate"},
  {least: 4, name: "light"},
  {least: 3, name: "weak"},
];
const DEEPEST = 300;  // the relation says nothing of quakes from farther down
const LEAST_DEPTH = 5;  // for the distance from the source
const FARTHEST = 20000;
const EXACT = 0.01;

// Anywhere for a quake of which both are known, and null for any other.
export function shakingOf(magnitude, depth) {
  if (magnitude === null || depth === null || depth > DEEPEST) {
    return null;
  }
  const down = Math.abs(depth);
  return {atEpicentre: shakingAtEpicentre(magnitude, down), depth: Math.max(down, LEAST_DEPTH)};
}

function shakingAtEpicentre(magnitude, depth) {
  const rupture = distanceToRupture(magnitude, depth);
  if (depth < 70) {
    return 4.40 + 1.26 * magnitude - 3.67 / 3 * Math.log10(rupture ** 3 + 1634.691752) + 0.012 * depth + 0.409;
  }
  return 3.76 + 1.48 * magnitude - 3.50 / 3 * Math.log10(rupture ** 3) + 0.0031 * depth;
}

// What breaks is not a point but a plane, whose upper part is nearer.
function distanceToRupture(magnitude, depth) {
  const width = Math.min(0.5 * 10 ** (magnitude - 5.39), 30);
  return depth >= 100 ? depth : Math.max(depth - 0.425 * width, 0);
}

export function shakingAt({atEpicentre, depth}, distance) {
  const fromSource = Math.hypot(depth, distance);
  return atEpicentre - 1.18 * Math.log(fromSource / depth) - 0.0044 * (fromSource - depth);
}

// null where it is too weak to be felt.
export function levelOf(intensity) {
  return LEVELS.find(({least}) => intensity >= least) || null;
}

// How far the shaking reaches a level; null when it does so nowhere.
export function radiusOf(shaking, level) {
  if (!(shaking.atEpicentre >= level.least)) {
    return null;
  }
  let inside = 0;
  let outside = FARTHEST;
  while (outside - inside > EXACT) {
    const middle = (inside + outside) / 2;
    if (shakingAt(shaking, middle) >= level.least) {
      inside = middle;
    } else {
      outside = middle;
    }
  }
  return inside;
}

// --- The places that feel it

const PLACES_TOLD = 3;
const WEIGHT_OF_A_LEVEL = 3;  // a place counts as one with so many times the people that is shaken a level less
const TOLD_OF_ISLANDS = 6;  // the level
const NEIGHBOURS = 40;  // kilometres; of two places so close the larger one stands for both

// The places to tell of, the most strongly shaken first, as {name, isIsland, level}: the nearest one that feels it, for
// it is hit hardest, and then those where the most people feel it. An island without a town is told of where the shaking
// is strong, or where no town feels it.
export function placesToTell(shaking, quakePlace, places) {
  const felt = places.map(place => feltAt(shaking, quakePlace, place)).filter(({level}) => level)
      .sort((one, other) => one.distance - other.distance);
  const towns = felt.filter(({people}) => people > 0);
  const told = felt.filter(({people, level}) => people > 0 || level.least >= TOLD_OF_ISLANDS || towns.length === 0)
      .slice(0, 1);
  for (const place of towns.filter(town => !told.includes(town)).sort((one, other) => other.weight - one.weight)) {
    if (told.length < PLACES_TOLD && !told.some(other => standsFor(other, place))) {
      told.push(place);
    }
  }
  return told.sort((one, other) => one.distance - other.distance);
}

function feltAt(shaking, quakePlace, place) {
  const distance = distanceBetween(quakePlace, place);
  const level = levelOf(shakingAt(shaking, distance));
  return {...place, distance, level, weight: level && place.people * WEIGHT_OF_A_LEVEL ** level.least};
}

function standsFor(place, other) {
  return place.people >= other.people && distanceBetween(place, other) < NEIGHBOURS;
}
