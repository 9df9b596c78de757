// Which place a quake is named after: the nearest one that people far enough away have heard of.

import BASEMAP from "../basemap/vector.json" with {type: "json"};
import {bearingBetween, distanceBetween} from "./geometry.js";

// How far a place lends its name, in kilometres: towns by their people, islands by their rank.
const TOWN_REACH = [[30000, 3000], [10000, 500], [2000, 200], [0, 100]];
const ISLAND_REACH = {1: 3000, 2: 400, 3: 120};

export function namedPlaces() {
  const towns = BASEMAP.places.map(([name, people, longitude, latitude]) => (
    {name, longitude, latitude, reach: TOWN_REACH.find(([least]) => people >= least)[1]}));
  const islands = BASEMAP.labels.filter(([, kind, rank]) => kind === "island" && ISLAND_REACH[rank])
      .map(([name, , rank, , longitude, latitude]) => ({name, longitude, latitude, reach: ISLAND_REACH[rank]}));
  return [...towns, ...islands];
}

// The nearest place that reaches so far, as {name, distance (kilometres), bearing (degrees, from it to the quake)},
// or null.
export function nearestPlace(quakePlace, places) {
  let best = null;
  for (const place of places) {
    const distance = distanceBetween(place, quakePlace);
    if (distance <= place.reach && (!best || distance < best.distance)) {
      best = {name: place.name, distance, bearing: bearingBetween(place, quakePlace)};
    }
  }
  return best;
}
