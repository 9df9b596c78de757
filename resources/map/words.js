// What the page says. Every text is empty where its value is not known.

const DIRECTIONS =
    ["north", "north-east", "east", "south-east", "south", "south-west", "west", "north-west"];
const NEAR = 5;  // kilometres
const LONGEST_UNBROKEN = 16;  // letters

// Classes after the earthquake magnitude scale of UPSeis (Michigan Tech), numbers after the earthquake statistics of the
// U.S. Geological Survey. The scale calls those below 7 strong, moderate and light, which are levels of the shaking here.
const MAGNITUDE_CLASSES = [
  {least: 9, name: "giant earthquake", often: "five since 1900 worldwide"},
  {least: 8, name: "great earthquake", often: "about one a year worldwide"},
  {least: 7, name: "major earthquake", often: "about 15 a year worldwide"},
  {least: 6, often: "about 130 a year worldwide"},
  {least: 5, often: "about 1,300 a year worldwide"},
  {least: 4, often: "about 13,000 a year worldwide"},
  {least: 3, often: "about 130,000 a year worldwide"},
  {least: -Infinity, often: "thousands a day worldwide"},
];
const LARGEST_CLASSED = 10;  // none of a larger magnitude is known or expected

// The depth classes of the U.S. Geological Survey, in kilometres.
const DEPTH_CLASSES = [{most: 70, name: "shallow"}, {most: 300, name: "intermediate"}, {most: 800, name: "deep"}];

export function magnitudeClass(magnitude) {
  if (magnitude === null || magnitude > LARGEST_CLASSED) {
    return null;
  }
  return MAGNITUDE_CLASSES.find(({least}) => magnitude >= least);
}

export function depthClass(depth) {
  return depth === null ? null : DEPTH_CLASSES.find(({most}) => depth <= most) || null;
}

export function magnitudeInWords(magnitude) {
  return magnitude === null ? "" : magnitude.toFixed(1).replace(/^-0\.0$/, "0.0").replace("-", "\u2212");
}

// Above the sea level there is ground on land alone.
export function depthInWords(depth, isOnLand) {
  if (depth === null) {
    return "";
  }
  const size = Math.abs(depth) < 9.95 ? Math.round(Math.abs(depth) * 10) / 10 : Math.round(Math.abs(depth));
  if (depth < 0 && size > 0) {
    return isOnLand ? `${size} km above sea level` : "At the surface";
  }
  const depthName = depthClass(depth);
  return `Depth ${size} km` + (depthName ? ` · ${depthName.name}` : "");
}

function directionInWords(bearing) {
  return DIRECTIONS[Math.round(bearing / 45) % 8];
}

// nearest is what nearestPlace gives.
export function placeInWords(place, nearest) {
  if (!place) {
    return "Place not known";
  }
  if (!nearest) {
    return coordinatesInWords(place);
  }
  if (nearest.distance < NEAR) {
    return `Near ${withArticle(nearest.name)}`;
  }
  return `${roundedDistance(nearest.distance)} km ${directionInWords(nearest.bearing)} of ` +
      withArticle(nearest.name);
}

// A name is not broken between its words, unless it is long.
function withArticle(name) {
  const whole = /(Islands|Reefs)$/.test(name) ? `the ${name}` : name.replace(/^The /, "the ");
  return whole.length > LONGEST_UNBROKEN ? whole : whole.replaceAll(" ", "\u00a0");
}

// To five kilometres near by and to ten farther away: places are known no better.
function roundedDistance(kilometres) {
  const step = kilometres < 100 ? 5 : 10;
  return String(Math.round(kilometres / step) * step).replace(/(\d)(\d{3})$/, "$1,$2");
}

export function coordinatesInWords(place) {
  const east = place.longitude > 180 ? place.longitude - 360 : place.longitude;
  return degreesInWords(place.latitude, "N", "S") + ", " + degreesInWords(east, "E", "W");
}

function degreesInWords(degrees, positive, negative) {
  const size = Math.abs(degrees).toFixed(2);
  const isOnTheLine = Number(size) === 0 || Number(size) === 180;
  return size + "°" + (isOnTheLine ? "" : " " + (degrees < 0 ? negative : positive));
}

// told is what placesToTell gives: strong in Culverden, light in Christchurch and Wellington.
export function shakingInWords(told) {
  if (told.length === 0) {
    return "Probably not felt on land";
  }
  const groups = [];
  for (const place of told) {
    const start = `${place.level.name} ${place.isIsland ? "on" : "in"} `;
    const names = groups.find(group => group.start === start)?.names || [];
    if (names.length === 0) {
      groups.push({start, names});
    }
    names.push(withArticle(place.name));
  }
  return "Estimated shaking: " + groups.map(({start, names}) => start + listInWords(names)).join(", ");
}

function listInWords(names) {
  return [names.slice(0, -1).join(", "), names.at(-1)].filter(Boolean).join(" and ");
}

const ORDINALS = ["", "2nd ", "3rd "];

// rank is what rankOf gives.
export function rankInWords(rank, {kind, shown}) {
  const ordinal = ORDINALS[rank - 1] ?? `${rank}th `;
  const all = {service: "of the last eight days", sample: `of ${shown.length} sample earthquakes`};
  const words = `${ordinal}biggest ${all[kind] || `of these ${shown.length}`}`;
  return words[0].toUpperCase() + words.slice(1);
}

// Where the quake stands in the list, whose it is, and the answer's age where it is old.
export function listInWordsOf({index, shown, kind, source}, age) {
  const place = index < 0 ? "" : `${index + 1} of ${shown.length}`;
  return [place, kind === "sample" ? "sample earthquakes" : source, age && `as of ${age}`].filter(Boolean).join(" · ");
}
