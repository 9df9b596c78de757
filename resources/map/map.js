// The page of one earthquake: reads its call, draws everything once, and then rests.

import {arrangementAt} from "./arrangement.js";
import {quakeFrom, quakeFromCall} from "./call.js";
import {startEntrance} from "./entrance.js";
import {boxesMeet} from "./geometry.js";
import {createInset, drawInset} from "./inset.js";
import {createKey, drawKey} from "./key.js";
import {drawLabels, layOutLabels} from "./labels.js";
import {drawLayers} from "./layers.js";
import {listOf} from "./list.js";
import {boxOfMark, createMark, drawMark} from "./mark.js";
import {isVolcano} from "./names.js";
import {boxOf, fillPanel, fitPanel, shortenLevels} from "./panel.js";
import {placesOnLand} from "./places.js";
import {createView} from "./projection.js";
import {missingRelief} from "./relief.js";
import {drawRings, layOutRingNames, ringsBesideMark, ringsOf} from "./rings.js";
import {createScale, drawScale} from "./scale.js";
import {placesToTell, shakingOf} from "./shaking.js";

let shown = null;  // the quake on the page
let currentMark = null;
let drawing = null;  // the promise of the last draw
let opened = null;  // the time of the first draw

function show(quake) {
  shown = quake;
  opened ??= new Date(Date.now());
  drawing = draw();
}

// Settles when the picture is whole: relief that is not there yet is drawn when it has come.
async function draw() {
  const view = currentView(shown);
  const missing = missingRelief(view);
  drawPage(view, shown);
  if (missing.length > 0) {
    await Promise.allSettled(missing.map(image => image.decode()));
    drawPage(currentView(shown), shown);
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
  const arrangement = arrangementAt(opened.getTime());
  const facts = factsOf(view, quake, mark);
  fillPanel(view, facts, arrangement, opened);
  fitPanel(view, mark);
  drawLayers(context, view, density);
  const fixed = {mark: quake.place && boxOfMark(mark), panel: boxOf(document.getElementById("panel")),
    credit: boxOf(document.getElementById("credit"))};
  const corners = placeCorners(context, view, facts, fixed, arrangement);
  const obstacles = {...fixed, ...corners.boxes};
  const labels = layOutNames(context, view, facts, obstacles);
  drawRings(context, view, facts.rings.inside, labels.filter(({item}) => item.ring));
  drawLabels(context, labels);
  shortenLevels([...facts.rings.inside, ...(corners.inset ? corners.inset.rings : [])],
      new Set(labels.map(({item}) => item.ring)));
  corners.key &&= createKey(context, view, corners.scale, arrangement, labels.some(({item}) => isVolcano(item)));
  drawCorners(context, view, quake, corners, density);
  if (quake.place) {
    drawMark(context, mark);
  }
  currentMark = quake.place ? mark : null;
  tellLayout(view, obstacles, labels, facts, corners);
}

// What is known of the quake, and what follows.
function factsOf(view, quake, mark) {
  const list = listOf(quake, window.TELLMAR_EARTHQUAKES);
  const shaking = quake.place && shakingOf(quake.magnitude, quake.depth);
  return {
    quake, list, told: shaking && placesToTell(shaking, quake.place, placesOnLand()),
    rings: ringsBesideMark(view, quake.place, shaking ? ringsOf(shaking) : [], mark),
  };
}

// The names of the map, and those of the rings where there is room left.
function layOutNames(context, view, facts, obstacles) {
  const names = layOutLabels(context, view, obstacles, facts.rings.inside);
  const taken = [...Object.values(obstacles).filter(Boolean), ...names.flatMap(({boxes, line}) => [...boxes, ...line])];
  return [...names, ...layOutRingNames(context, view, facts.rings.inside, taken)];
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

// The scale, the key and the region, where the panel and the mark leave them room.
function placeCorners(context, view, facts, fixed, arrangement) {
  const taken = Object.values(fixed).filter(Boolean);
  const firstFree = corners =>
      corners.find(corner => corner && !taken.some(box => boxesMeet(box, corner.box))) || null;
  const inset = firstFree([createInset(view, facts, arrangement)]);
  const scale = firstFree([fixed.credit, fixed.panel].map(({top}) => createScale(view, top - 4 * view.unit, arrangement)));
  const key = firstFree([scale && createKey(context, view, scale, arrangement, true)]);
  return {inset, scale, key, boxes: {inset: inset && inset.box, scale: scale && scale.box, key: key && key.box}};
}

function drawCorners(context, view, quake, {inset, scale, key}, density) {
  if (inset) {
    drawInset(context, view, quake, inset, density);
  }
  if (scale) {
    drawScale(context, view, scale);
  }
  if (key) {
    drawKey(context, view, key);
  }
}

// What stands where, for those who check the page.
function tellLayout(view, boxes, labels, facts, {inset}) {
  window.tellmarLayout = Object.freeze({
    width: view.width, height: view.height, place: shown.place, middle: view.middle, boxes,
    labels: labels.map(label => ({...label, text: label.item.lines.join("\n")})),
    rings: {view: facts.rings.inside.map(({name, box}) => ({name, box})),
      inset: inset ? inset.rings.map(({name}) => name) : []},
    missing: missingRelief(view).length,
  });
}

// --- The window

const call = document.body.getAttribute("onload") || "";

// The body's onload calls it with the quake to show.
window.initializeMap = (...values) => show(quakeFrom(...values));

// A number that is not finite stands in the call under one of these names. They go once the call has run.
Object.assign(window, {nan: NaN, inf: Infinity});

// Settles when the picture is whole, however the call went: the web view waits for it. The load event comes to the
// body's own handler first, so a call that could not run is read here instead.
window.tellmarPicture = new Promise(settle => {
  window.addEventListener("load", () => {
    delete window.nan;
    delete window.inf;
    if (!shown) {
      show(quakeFromCall(call));
    }
    settle(drawing);
  });
});

window.addEventListener("resize", () => {
  const {style} = document.getElementById("map_canvas");
  style.width = window.innerWidth + "px";
  style.height = window.innerHeight + "px";
  if (shown) {
    show(shown);
  }
});

// Sent by the web view when it has come to the screen.
window.addEventListener("viewshown", () => {
  if (currentMark) {
    startEntrance(currentMark);
  }
});

// The relief starts to load with the page, so that it is there when the page's load ends.
missingRelief(currentView(quakeFromCall(call)));
