"use strict";

// The page of one earthquake: the coast in Web Mercator, the quake in the middle of what can be seen of it.
// land.js has brought LAND: west, south, east, north, then a first point and differences, in 0.0001 degree.

// A number that is none may come out in the call under these names.
var nan = NaN;
var inf = Infinity;

const HIDDEN_EDGE = 10;  // CSS pixels at the left and at the top that lie outside the screen
const SMALLEST_LABELLED_GRID = 260;  // CSS pixels of the smaller side
const UNITS_PER_DEGREE = 10000;
const WHOLE_REGION = {west: 165, south: -50, east: 186, north: -31};
const EARTH_RADIUS = 6371;  // kilometres: nothing lies deeper
const COLOURS = {
  seaNear: "#17384d",
  seaFar: "#0b1a26",
  grid: "rgba(170, 205, 225, 0.13)",
  gridText: "rgba(170, 205, 225, 0.45)",
  shallows: "rgba(110, 180, 205, 0.10)",
  land: "#31444a",
  coast: "#8fb0b4",
  quake: "255, 106, 77",
};

let shown = null;  // the quake of the last call: {place, magnitude, zoom}

function initializeMap(latitude, longitude, magnitude, depthText, dateText, zoom) {
  shown = {
    place: placeOf(latitude, longitude),
    magnitude: magnitude,
    zoom: Number.isFinite(zoom) ? Math.min(Math.max(zoom, 0), 20) : 8,
  };
  showText("magnitude", Number.isFinite(magnitude) ? "Magnitude " + magnitude.toFixed(1) : "");
  showText("depth", depthInWords(depthText));
  showText("date", known(dateText));
  showText("place", shown.place ? placeInWords(shown.place) : "");
  draw();
}

// --- What is known, in words

function placeOf(latitude, longitude) {
  if (!Number.isFinite(longitude) || !(Math.abs(latitude) <= 90)) {
    return null;
  }
  return {latitude: latitude, longitude: ((longitude % 360) + 360) % 360};
}

function known(text) {
  return text === undefined || text === null || /^[-+]?(nan|inf|undefined|null)/i.test(text) ? "" : String(text);
}

function depthInWords(depthText) {
  const match = /^(-?)(\d+(?:\.\d+)?)\s*km$/.exec(known(depthText));
  if (!match) {
    return known(depthText);
  }
  if (Number(match[2]) > EARTH_RADIUS) {
    return "";
  }
  const kilometres = String(Math.round(Number(match[2]) * 10) / 10);
  return kilometres + (match[1] && kilometres !== "0" ? " km above sea level" : " km deep");
}

function degreesInWords(degrees, decimals, positive, negative) {
  const size = Math.abs(degrees).toFixed(decimals);
  const onTheLine = Number(size) === 0 || Number(size) === 180;
  return size + "°" + (onTheLine ? "" : degrees < 0 ? " " + negative : " " + positive);
}

function latitudeInWords(latitude, decimals) {
  return degreesInWords(latitude, decimals, "N", "S");
}

function longitudeInWords(longitude, decimals) {
  return degreesInWords(longitude > 180 ? longitude - 360 : longitude, decimals, "E", "W");
}

function placeInWords(place) {
  return latitudeInWords(place.latitude, 2) + ",  " + longitudeInWords(place.longitude, 2);
}

function showText(id, text) {
  document.getElementById(id).textContent = text;
  const values = document.getElementById("values");
  values.classList.toggle("unknown", values.textContent.trim() === "");
}

// --- The map

function draw() {
  const div = document.getElementById("map_canvas");
  const view = viewOf(div.clientWidth, div.clientHeight);
  const canvas = div.querySelector("canvas");
  const density = window.devicePixelRatio || 1;
  canvas.width = Math.round(view.width * density);
  canvas.height = Math.round(view.height * density);
  const context = canvas.getContext("2d", {alpha: false});
  context.scale(density, density);

  drawSea(context, view);
  drawLand(context, view);
  drawGrid(context, view);
  if (shown.place) {
    drawQuake(context, view);
  }
}

// What the screen shows: the scale, the world's pixel that lies in the middle, and the edges in degrees.
function viewOf(width, height) {
  const middle = {x: (width + HIDDEN_EDGE) / 2, y: (height + HIDDEN_EDGE) / 2};
  const view = {width: width, height: height, middle: middle, unit: Math.min(width, height) / 360};
  const place = shown.place || wholeRegion(view);
  view.world = 256 * Math.pow(2, shown.place ? shown.zoom : place.zoom);
  view.left = worldX(view, place.longitude) - middle.x;
  view.top = worldY(view, place.latitude) - middle.y;
  view.west = view.left / view.world * 360;
  view.east = (view.left + width) / view.world * 360;
  view.north = latitudeAt(view, view.top);
  view.south = latitudeAt(view, view.top + height);
  return view;
}

function wholeRegion(view) {
  const one = {world: 1};
  const spanX = worldX(one, WHOLE_REGION.east) - worldX(one, WHOLE_REGION.west);
  const spanY = worldY(one, WHOLE_REGION.south) - worldY(one, WHOLE_REGION.north);
  const middleY = (worldY(one, WHOLE_REGION.south) + worldY(one, WHOLE_REGION.north)) / 2;
  return {
    longitude: (WHOLE_REGION.west + WHOLE_REGION.east) / 2,
    latitude: latitudeAt(one, middleY),
    zoom: Math.log2(Math.max(1, Math.min(view.width / spanX, view.height / spanY)) / 256),
  };
}

function worldX(view, longitude) {
  return longitude / 360 * view.world;
}

function worldY(view, latitude) {
  const sine = Math.sin(Math.min(Math.max(latitude, -85), 85) * Math.PI / 180);
  return (0.5 - Math.log((1 + sine) / (1 - sine)) / (4 * Math.PI)) * view.world;
}

function latitudeAt(view, y) {
  return Math.atan(Math.sinh(Math.PI * (1 - 2 * y / view.world))) * 180 / Math.PI;
}

function drawSea(context, view) {
  const reach = Math.hypot(view.width, view.height) / 2;
  const sea = context.createRadialGradient(view.middle.x, view.middle.y, 0, view.middle.x, view.middle.y, reach);
  sea.addColorStop(0, COLOURS.seaNear);
  sea.addColorStop(1, COLOURS.seaFar);
  context.fillStyle = sea;
  context.fillRect(0, 0, view.width, view.height);
}

function drawLand(context, view) {
  context.beginPath();
  for (const outline of window.LAND || []) {
    if (meetsView(outline, view)) {
      addOutline(context, view, outline);
    }
  }
  context.lineJoin = "round";
  for (const width of [14, 8, 4]) {
    context.lineWidth = width * view.unit;
    context.strokeStyle = COLOURS.shallows;
    context.stroke();
  }
  context.fillStyle = COLOURS.land;
  context.fill();
  context.lineWidth = Math.max(0.6, 0.5 * view.unit);
  context.strokeStyle = COLOURS.coast;
  context.stroke();
}

function meetsView([west, south, east, north], view) {
  return west <= view.east * UNITS_PER_DEGREE && east >= view.west * UNITS_PER_DEGREE &&
      south <= view.north * UNITS_PER_DEGREE && north >= view.south * UNITS_PER_DEGREE;
}

function addOutline(context, view, outline) {
  let x = 0;
  let y = 0;
  for (let i = 4; i < outline.length; i += 2) {
    x += outline[i];
    y += outline[i + 1];
    const step = i === 4 ? "moveTo" : "lineTo";
    context[step](
        worldX(view, x / UNITS_PER_DEGREE) - view.left, worldY(view, y / UNITS_PER_DEGREE) - view.top);
  }
  context.closePath();
}

function drawGrid(context, view) {
  const perDegree = view.world / 360;
  const step = [1, 2, 5, 10, 30].find(degrees => degrees * perDegree > 70 * view.unit) || 90;
  context.lineWidth = Math.max(0.5, 0.35 * view.unit);
  context.strokeStyle = COLOURS.grid;
  context.fillStyle = COLOURS.gridText;
  context.font = Math.max(7, 5.2 * view.unit) + "px sans-serif";
  context.textBaseline = "top";
  for (let longitude = Math.ceil(view.west / step) * step; longitude < view.east; longitude += step) {
    drawMeridian(context, view, longitude);
  }
  for (let latitude = Math.ceil(view.south / step) * step; latitude < view.north; latitude += step) {
    drawParallel(context, view, latitude);
  }
}

function drawMeridian(context, view, longitude) {
  const x = worldX(view, longitude) - view.left;
  drawLine(context, x, 0, x, view.height);
  context.textAlign = "left";
  drawLabel(context, view, longitudeInWords(((longitude % 360) + 360) % 360, 0), x + 2 * view.unit, HIDDEN_EDGE);
}

function drawParallel(context, view, latitude) {
  const y = worldY(view, latitude) - view.top;
  drawLine(context, 0, y, view.width, y);
  context.textAlign = "right";
  drawLabel(context, view, latitudeInWords(latitude, 0), view.width - 2 * view.unit, y);
}

function drawLabel(context, view, text, x, lineY) {
  if (Math.min(view.width, view.height) >= SMALLEST_LABELLED_GRID) {
    context.fillText(text, x, lineY + 3 * view.unit);
  }
}

function drawLine(context, x1, y1, x2, y2) {
  context.beginPath();
  context.moveTo(x1, y1);
  context.lineTo(x2, y2);
  context.stroke();
}

function drawQuake(context, view) {
  const {x, y} = view.middle;
  const strength = Number.isFinite(shown.magnitude) ? Math.min(Math.max(shown.magnitude, 2), 9) : 4;
  const radius = strength * strength * 1.1 * view.unit;
  const glow = context.createRadialGradient(x, y, 0, x, y, radius * 1.6);
  glow.addColorStop(0, `rgba(${COLOURS.quake}, 0.55)`);
  glow.addColorStop(1, `rgba(${COLOURS.quake}, 0)`);
  fillCircle(context, x, y, radius * 1.6, glow);
  context.lineWidth = Math.max(1, view.unit);
  for (const [part, alpha] of [[0.4, 0.95], [0.7, 0.6], [1, 0.35]]) {
    context.strokeStyle = `rgba(${COLOURS.quake}, ${alpha})`;
    context.beginPath();
    context.arc(x, y, radius * part, 0, 2 * Math.PI);
    context.stroke();
  }
  fillCircle(context, x, y, Math.max(2.5, 3.2 * view.unit), "#fff");
}

function fillCircle(context, x, y, radius, style) {
  context.fillStyle = style;
  context.beginPath();
  context.arc(x, y, radius, 0, 2 * Math.PI);
  context.fill();
}

// --- The window

window.addEventListener("resize", () => {
  const div = document.getElementById("map_canvas");
  div.style.width = window.innerWidth + "px";
  div.style.height = window.innerHeight + "px";
  if (shown) {
    draw();
  }
});

// This comes after the body's own handler: a call that could not run leaves the region to look at.
window.addEventListener("load", () => {
  if (!shown) {
    initializeMap(nan, nan, nan, "", "", 8);
  }
});
