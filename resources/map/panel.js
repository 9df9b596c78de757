// The panel with what is known of the quake, and the credit lines.

import {ageInWords, whenInWords} from "./dates.js";
import {boxesMeet} from "./geometry.js";
import {rankOf} from "./list.js";
import {boxOfMark, markColour} from "./mark.js";
import {isOnLand, namedPlaces, nearestPlace} from "./places.js";
import {HIDDEN_EDGE, isInRegion} from "./projection.js";
import {depthInWords, listInWordsOf, magnitudeClass, magnitudeInWords, placeInWords, rankInWords, shakingInWords}
  from "./words.js";

const CREDITS = {
  whole: "Sea floor: NASA Blue Marble. Land relief: LINZ, CC BY 4.0. Coast: GSHHG. Faults: GEM, CC BY-SA 4.0. " +
      "Plates: Bird 2003, ODC-By. Places: GeoNames, CC BY 4.0.",
  short: "NASA · LINZ · GSHHG · GEM · Bird 2003 · GeoNames",
};
const LICENCES = {GeoNet: ", CC BY 3.0 NZ"};
const SAMPLES = {whole: "samples from GeoNet and other agencies, CC BY 3.0 NZ", short: "samples"};
const LEAST_WHOLE_CREDIT = 640;  // CSS pixels

// On a low screen the panel gives up these lines, in this order, until it leaves the mark free.
const LEAST_NEEDED = ["levels", "depth", "list", "shaking", "size", "date"];
const SMALLEST_UNIT = 0.36;  // pixels

// arrangement is what arrangementAt gives, list what listOf gives, and told the places of placesToTell or null.
export function fillPanel(view, {quake, list, told, rings}, arrangement, now) {
  styleRoot(view, quake, arrangement);
  const kind = magnitudeClass(quake.magnitude);
  setText("#magnitude", magnitudeInWords(quake.magnitude));
  setText("#size b", quake.magnitude === null ? "Magnitude not known" : ["Magnitude", kind?.name].filter(Boolean).join(" · "));
  setText("#size span", rankText(quake, list) || (kind ? kind.often : ""));
  setText("#place", placeInWords(quake.place, quake.place && nearestPlace(quake.place, namedPlaces())));
  fillDate(whenInWords(quake.date, now));
  setText("#depth", depthInWords(quake.depth, quake.depth < 0 && quake.place && isOnLand(quake.place)));
  setText("#shaking", isSaid(quake, told) ? shakingInWords(told) : "");
  fillLevels([...rings.inside, ...rings.outside], rings.inside.length > 0);
  setText("#list", list ? listInWordsOf(list, ageInWords(list.answerTime, now)) : "");
  setText("#sources", creditText(view, list).replaceAll("-", "\u2011"));  // a licence is not broken at its hyphen
}

function styleRoot(view, quake, {isMirrored, x, y}) {
  const style = document.documentElement.style;
  style.setProperty("--unit", Math.max(SMALLEST_UNIT, view.unit) + "px");
  style.setProperty("--text", Math.max(SMALLEST_UNIT, view.text) + "px");
  style.setProperty("--quake", `rgb(${markColour(quake.magnitude)})`);
  style.setProperty("--shift-x", x);
  style.setProperty("--shift-y", y);
  document.body.className = isMirrored ? `${view.shape} mirrored` : view.shape;
}

function rankText(quake, list) {
  const rank = list && list.index >= 0 ? rankOf(quake, list) : null;
  return rank === null ? "" : rankInWords(rank, list);
}

// The map knows the places of its region alone, so it cannot say that nobody elsewhere felt a quake.
function isSaid(quake, told) {
  return told && (told.length > 0 || isInRegion(quake.place));
}

function fillDate({ago, date}) {
  setText("#ago", ago);
  setText("#day", date.replace(/ (?=[ap]m$)/, "\u00a0"));
  document.getElementById("date").hidden = ago + date === "";
}

// Which ring is which, and what they are unless a sentence says it.
function fillLevels(rings, hasRings) {
  const element = document.getElementById("levels");
  const title = hasRings && !isEstimateSaid() ? "Rings: estimated shaking " : "";
  element.hidden = rings.length === 0 && title === "";
  element.replaceChildren(title, ...[...rings].reverse().map(({name, colour}) => {
    const part = document.createElement("span");
    part.textContent = name;
    part.style.setProperty("--ring", `rgb(${colour})`);
    return part;
  }));
}

// Leaves out the rings that are not drawn, and those with their name on the map.
export function shortenLevels(rings, named) {
  if (!document.getElementById("levels").hidden) {
    fillLevels(rings.filter(({name}) => !named.has(name)), rings.length > 0);
  }
}

function isEstimateSaid() {
  return document.getElementById("shaking").textContent.startsWith("Estimated");
}

function creditText(view, list) {
  const isWhole = view.width >= LEAST_WHOLE_CREDIT;
  const map = isWhole ? CREDITS.whole : CREDITS.short;
  if (!list) {
    return map;
  }
  const {whole, short} = list.kind === "sample" ? SAMPLES :
      {whole: list.source + (LICENCES[list.source] || ""), short: list.source};
  return isWhole ? `${map} Earthquakes: ${whole}.` : `${map} · ${short}`;
}

function setText(selector, text) {
  const element = document.querySelector(selector);
  element.textContent = text;
  element.hidden = text === "";
}

// Drops lines until the panel is clear of the mark and inside its part of the screen.
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
    const top = view.lowerPanel ? view.height - view.lowerPanel : HIDDEN_EDGE;
    if (box.top >= top && box.right <= view.width && !boxesMeet(box, free)) {
      return;
    }
  }
}

export function boxOf(element) {
  const {left, top, right, bottom} = element.getBoundingClientRect();
  return {left, top, right, bottom};
}
