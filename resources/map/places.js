"use strict";

// Which place a quake is named after: the nearest one that people far enough away have heard of.

// How far a place lends its name, in kilometres: towns by their people, islands by their rank.
const TOWN_REACH = [[30000, 3000], [10000, 500], [2000, 200], [0, 100]];
const ISLAND_REACH = {1: 3000, 2: 400, 3: 120};

function namedPlaces() {
  const towns = BASEMAP.places.map(([name, people, longitude, latitude]) => (
    {name, longitude, latitude, reach: TOWN_REACH.find(([least]) => people >= least)[1]}));
  const islands = BASEMAP.labels.filter(([, kind, rank]) => kind === "island" && ISLAND_REACH[rank])
      .map(([name, , rank, , longitude, latitude]) => ({name, longitude, latitude, reach: ISLAND_REACH[rank]}));
  return [...towns, ...islands];
}

// The nearest place that reaches so far, as {name, distance (kilometres), bearing (degrees, from it to the quake)},
// or null.
function nearestPlace(quakePlace, places) {
  let best = null;
  for (const place of places) {
    const distance = distanceBetween(place, quakePlace);
    if (distance <= place.reach && (!best || distance < best.distance)) {
      best = {name: place.name, distance, bearing: bearingBetween(place, quakePlace)};
    }
  }
  return best;
}

function radians(degrees) {
  return degrees * Math.PI / 180;
}

// Along the great circle, in kilometres.
function distanceBetween(from, to) {
  const halfLatitude = Math.sin(radians(to.latitude - from.latitude) / 2);
  const halfLongitude = Math.sin(radians(to.longitude - from.longitude) / 2);
  const part = halfLatitude ** 2 +
      Math.cos(radians(from.latitude)) * Math.cos(radians(to.latitude)) * halfLongitude ** 2;
  return 2 * EARTH_RADIUS * Math.asin(Math.sqrt(Math.min(1, part)));
}

// Clockwise from north, in degrees.
function bearingBetween(from, to) {
  const turn = radians(to.longitude - from.longitude);
  const east = Math.sin(turn) * Math.cos(radians(to.latitude));
  const north = Math.cos(radians(from.latitude)) * Math.sin(radians(to.latitude)) -
      Math.sin(radians(from.latitude)) * Math.cos(radians(to.latitude)) * Math.cos(turn);
  return (Math.atan2(east, north) * 180 / Math.PI + 360) % 360;
}
