// The places that a quake is named after and that its shaking reaches, and where there is land.

import BASEMAP from "../basemap/vector.json" with {type: "json"};
import {bearingBetween, distanceBetween} from "./geometry.js";
import {isInShape} from "./shapes.js";

// How far a place lends its name, in kilometres: towns by their people, islands by their rank.
const TOWN_REACH = [[30000, 3000], [10000, 500], [2000, 200], [0, 100]];
const ISLAND_REACH = {1: 3000, 2: 400, 3: 120};
const VOLCANO_REACH = {remote: 60, nearTown: 10};
const NEAR_TOWN = 30;  // kilometres
const ISLAND_SIZE = 80;  // kilometres from a large island's middle to its shore

const CLEARER_NAMES = {Waitangi: "Waitangi (Chatham Islands)"};  // another one is better known

const TOWNS = BASEMAP.places.map(([name, people, longitude, latitude]) => (
  {name: CLEARER_NAMES[name] || name, people, longitude, latitude, reach: TOWN_REACH.find(([least]) => people >= least)[1]}));

const ISLANDS = BASEMAP.labels.filter(([, kind, rank]) => kind === "island" && ISLAND_REACH[rank])
    .map(([name, , rank, , longitude, latitude]) => (
      {name, people: 0, isIsland: true, longitude, latitude, reach: ISLAND_REACH[rank]}));

// Those that rise above the sea; a field of them has no one place. A town close by is better known.
const VOLCANOES = BASEMAP.volcanoes.filter(([name, isUnderSea]) => !isUnderSea && !/field/.test(name))
    .map(([name, , longitude, latitude]) => ({name, people: 0, isIsland: /Island/.test(name), longitude, latitude}))
    .map(volcano => ({...volcano, reach: VOLCANO_REACH[hasTown(volcano, NEAR_TOWN) ? "nearTown" : "remote"]}));

export function namedPlaces() {
  return [...TOWNS, ...ISLANDS, ...VOLCANOES];
}

// The towns, and the islands that have none.
export function placesOnLand() {
  const islands = [...ISLANDS, ...VOLCANOES.filter(({isIsland}) => isIsland)];
  return [...TOWNS, ...islands.filter(island => !hasTown(island, ISLAND_SIZE))];
}

function hasTown(place, distance) {
  return TOWNS.some(town => distanceBetween(town, place) < distance);
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

export function isOnLand(place) {
  return BASEMAP.land.some(shape => isInShape(shape, place));
}
