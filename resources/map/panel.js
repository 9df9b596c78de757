"use strict";

// The panel with what is known of the quake, and the credit line.

const CREDITS = {
  whole: "Sea floor: Natural Earth. Land relief: LINZ, CC BY 4.0. Coast: GSHHG. Faults: GEM, CC BY-SA 4.0. " +
      "Plates: Bird 2003, ODC-By. Places: GeoNames, CC BY 4.0. Earthquakes: GeoNet, CC BY 3.0 NZ.",
  short: "Natural Earth · LINZ · GSHHG · GEM · Bird 2003 · GeoNames · GeoNet",
};
const LEAST_WHOLE_CREDIT = 560;  // CSS pixels
const GAP = 4;  // units between the panel and the mark

// On a small screen the panel gives up these lines, in this order, until it leaves the mark free.
const LEAST_NEEDED = ["meaning", "size", "date", "depth"];

function fillPanel(view, quake) {
  const style = document.documentElement.style;
  style.setProperty("--unit", Math.max(0.5, view.unit) + "px");
  style.setProperty("--quake", `rgb(${markColour(quake.magnitude)})`);

  const kind = magnitudeClass(quake.magnitude);
  setText("#magnitude", magnitudeInWords(quake.magnitude));
  setText("#size b", kind ? `${kind.name} earthquake` : quake.magnitude === null ? "Earthquake" : "Magnitude");
  setText("#size span", kind ? kind.often : "");
  setText("#place", placeInWords(quake.place, quake.place && nearestPlace(quake.place, namedPlaces())));
  setText("#depth", [depthInWords(quake.depth), depthIsPlaced(quake)].filter(Boolean).join(" · "));
  setText("#date", quake.date);
  setText("#meaning", meaningInWords(quake.magnitude, quake.depth));
  setText("#credit", view.width < LEAST_WHOLE_CREDIT ? CREDITS.short : CREDITS.whole);
}

// The coordinates, unless they stand for the place already.
function depthIsPlaced(quake) {
  if (!quake.place) {
    return "";
  }
  const coordinates = coordinatesInWords(quake.place);
  return document.querySelector("#place").textContent === coordinates ? "" : coordinates;
}

function setText(selector, text) {
  const element = document.querySelector(selector);
  element.textContent = text;
  element.hidden = text === "";
}

// Drops lines until the panel is clear of the mark and inside the screen.
function fitPanel(view, mark) {
  const panel = document.getElementById("panel");
  const free = boxOfMark(mark);
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

function boxOf(element) {
  const {left, top, right, bottom} = element.getBoundingClientRect();
  return {left, top, right, bottom};
}
