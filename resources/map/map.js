"use strict";

// The page of one earthquake: reads its call, draws everything once, and then rests.

let shown = null;  // the quake on the page
let currentMark = null;

// Called by the page's onload with the quake to show.
function initializeMap(latitude, longitude, magnitude, depthText, dateText, zoom) {
  show(quakeFrom(latitude, longitude, magnitude, depthText, dateText, zoom));
}

function show(quake) {
  shown = quake;
  draw();
}

function draw() {
  const view = currentView(shown);
  const missing = missingRelief(view);
  drawPage(view, shown);
  if (missing.length > 0) {
    Promise.allSettled(missing.map(image => image.decode())).then(() => drawPage(view, shown));
  }
}

function currentView(quake) {
  const {clientWidth, clientHeight} = document.getElementById("map_canvas");
  return createView(clientWidth, clientHeight, quake.place, quake.zoom);
}

function drawPage(view, quake) {
  const density = window.devicePixelRatio || 1;
  const context = mapContext(view, density);
  const mark = createMark(view, quake);
  fillPanel(view, quake);
  fitPanel(view, mark);
  drawLayers(context, view, density);
  const fixed = {mark: quake.place && boxOfMark(mark), panel: boxOf(document.getElementById("panel")),
    credit: boxOf(document.getElementById("credit"))};
  const corners = placeCorners(view, quake, fixed);
  const obstacles = {...fixed, ...corners.boxes};
  const labels = layOutLabels(context, view, obstacles);
  drawLabels(context, labels);
  drawCorners(context, view, quake, mark, corners, density);
  if (quake.place) {
    drawMark(context, mark);
  }
  currentMark = quake.place ? mark : null;
  tellLayout(view, obstacles, labels);
}

function mapContext(view, density) {
  const div = document.getElementById("map_canvas");
  const canvas = div.querySelector("canvas.map") || div.appendChild(document.createElement("canvas"));
  canvas.className = "map";
  canvas.width = Math.round(view.width * density);
  canvas.height = Math.round(view.height * density);
  const context = canvas.getContext("2d", {alpha: false});
  context.scale(density, density);
  return context;
}

// The scale and the region, where the panel and the mark leave them room.
function placeCorners(view, quake, fixed) {
  const taken = Object.values(fixed).filter(Boolean);
  const firstFree = corners =>
      corners.find(corner => corner && !taken.some(box => boxesMeet(box, corner.box))) || null;
  const inset = firstFree([createInset(view, quake)]);
  const scale = firstFree([fixed.credit, fixed.panel].map(({top}) => createScale(view, top - 4 * view.unit)));
  return {inset, scale, boxes: {inset: inset && inset.box, scale: scale && scale.box}};
}

function drawCorners(context, view, quake, mark, {inset, scale}, density) {
  if (inset) {
    drawInset(context, view, quake, mark, inset, density);
  }
  if (scale) {
    drawScale(context, view, scale);
  }
}

function layOutLabels(context, view, obstacles) {
  const items = labelItems(view);
  const margin = EDGE_MARGIN * view.unit;
  const bounds = {left: HIDDEN_EDGE + margin, top: HIDDEN_EDGE + margin,
    right: view.width - margin, bottom: view.height - margin};
  measureItems(context, items);
  return placeLabels(items, bounds, Object.values(obstacles).filter(Boolean), landFinder(view));
}

// What stands where, for those who check the page.
function tellLayout(view, boxes, labels) {
  window.tellmarLayout = Object.freeze({
    width: view.width, height: view.height, place: shown.place, middle: view.middle, boxes,
    labels: labels.map(({item, boxes: own}) => ({text: item.lines.join("\n"), boxes: own})),
    missing: missingRelief(view).length,
  });
}

// --- The window

// The relief starts to load with the page, so that it is there when the page's load ends.
missingRelief(currentView(quakeFromCall(document.body.getAttribute("onload") || "")));

window.addEventListener("resize", () => {
  const {style} = document.getElementById("map_canvas");
  style.width = window.innerWidth + "px";
  style.height = window.innerHeight + "px";
  if (shown) {
    draw();
  }
});

// This comes after the body's own handler: a call that could not run is read instead.
window.addEventListener("load", () => {
  if (!shown) {
    show(quakeFromCall(document.body.getAttribute("onload") || ""));
  }
});

// Sent by the web view when it has come to the screen.
window.addEventListener("viewshown", () => {
  if (currentMark) {
    startEntrance(currentMark);
  }
});
