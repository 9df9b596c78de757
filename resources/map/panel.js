// The panel with what is known of the quake, and the credit lines.

import {boxesMeet} from "./geometry.js";
import {boxOfMark, markColour} from "./mark.js";
import {namedPlaces, nearestPlace} from "./places.js";
import {HIDDEN_EDGE} from "./projection.js";
import {asOfInWords, coordinatesInWords, depthInWords, magnitudeClass, magnitudeInWords, meaningInWords, placeInWords}
  from "./words.js";

const CREDITS = {
  whole: "Sea floor: NASA Blue Marble. Land relief: LINZ, CC BY 4.0. Coast: GSHHG. Faults: GEM, CC BY-SA 4.0. " +
      "Plates: Bird 2003, ODC-By. Places: GeoNames, CC BY 4.0. Earthquakes: GeoNet, CC BY 3.0 NZ.",
  short: "NASA · LINZ · GSHHG · GEM · Bird 2003 · GeoNames · GeoNet",
};
const LEAST_WHOLE_CREDIT = 640;  // CSS pixels
const GAUGE_DEPTH = 700;  // kilometres

// On a low screen the panel gives up these lines, in this order, until it leaves the mark free.
const LEAST_NEEDED = ["meaning", "size", "date", "gauge", "depth"];
const SMALL = 0.5;  // unit of a view below which the panel is a strip
const SMALLEST_UNIT = 0.36;  // pixels

export function fillPanel(view, quake) {
  const style = document.documentElement.style;
  style.setProperty("--unit", Math.max(SMALLEST_UNIT, view.unit) + "px");
  document.body.classList.toggle("small", view.unit < SMALL);
  style.setProperty("--quake", `rgb(${markColour(quake.magnitude)})`);

  const kind = magnitudeClass(quake.magnitude);
  setText("#magnitude", magnitudeInWords(quake.magnitude));
  setText("#size b", kind ? `${kind.name} earthquake` : quake.magnitude === null ? "Earthquake" : "Magnitude");
  setText("#size span", kind ? kind.often : "");
  setText("#place", placeInWords(quake.place, quake.place && nearestPlace(quake.place, namedPlaces())));
  setText("#depth", [depthInWords(quake.depth), depthIsPlaced(quake)].filter(Boolean).join(" · "));
  fillGauge(quake.depth);
  setText("#date", quake.date);
  setText("#meaning", meaningInWords(quake.magnitude, quake.depth));
  setText("#as-of", asOfInWords(window.TELLMAR_AS_OF));
  setText("#sources", view.width < LEAST_WHOLE_CREDIT ? CREDITS.short : CREDITS.whole);
}

// The coordinates, unless they stand for the place already.
function depthIsPlaced(quake) {
  if (!quake.place) {
    return "";
  }
  const coordinates = coordinatesInWords(quake.place);
  return document.querySelector("#place").textContent === coordinates ? "" : coordinates;
}

// A scale from the surface down to the deepest quakes; the upper part is drawn out, for most of them are there.
function fillGauge(depth) {
  const gauge = document.getElementById("gauge");
  gauge.hidden = depth === null;
  const part = Math.sqrt(Math.min(Math.max(depth, 0) / GAUGE_DEPTH, 1));
  gauge.querySelector("i").style.top = 100 * part + "%";
}

function setText(selector, text) {
  const element = document.querySelector(selector);
  element.textContent = text;
  element.hidden = text === "";
}

// Drops lines until the panel is clear of the mark and inside the screen.
export function fitPanel(view, mark) {
  const panel = document.getElementById("panel");
  const free = boxOfMark(mark);
  const credit = boxOf(document.getElementById("credit"));
  document.documentElement.style.setProperty("--credit", view.height - credit.top + "px");
  for (const id of ["", ...LEAST_NEEDED]) {
    if (id) {
      document.getElementById(id).hidden = true;
    }
    const box = boxOf(panel);
    if (box.top >= HIDDEN_EDGE && box.right <= view.width && !boxesMeet(box, free)) {
      return;
    }
  }
}

export function boxOf(element) {
  const {left, top, right, bottom} = element.getBoundingClientRect();
  return {left, top, right, bottom};
}
