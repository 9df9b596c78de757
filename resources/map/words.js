// What the page says. Every text is empty where its value is not known.

const DIRECTIONS =
    ["north", "north-east", "east", "south-east", "south", "south-west", "west", "north-west"];
const MONTHS = ["January", "February", "March", "April", "May", "June", "July", "August", "September", "October",
  "November", "December"];
const NEAR = 5;  // kilometres

// Classes and effects after the earthquake magnitude scale of UPSeis (Michigan Tech), numbers a year after the
// earthquake statistics of the U.S. Geological Survey. What can happen, not what did: the feed does not tell that.
const MAGNITUDE_CLASSES = [
  {least: 8, name: "Great", often: "about one a year worldwide",
    effect: "Great earthquakes can destroy whole communities near their source."},
  {least: 7, name: "Major", often: "about 15 a year worldwide",
    effect: "Major earthquakes can do serious damage over a large area."},
  {least: 6, name: "Strong", often: "about 130 a year worldwide",
    effect: "Strong earthquakes can do much damage where many people live."},
  {least: 5, name: "Moderate", often: "about 1,300 a year worldwide",
    effect: "Moderate earthquakes are widely felt and can slightly damage buildings."},
  {least: 4, name: "Light", often: "about 13,000 a year worldwide",
    effect: "Light earthquakes are often felt and seldom do damage."},
  {least: 3, name: "Minor", often: "about 130,000 a year worldwide",
    effect: "Minor earthquakes are often felt and hardly ever do damage."},
  {least: -Infinity, name: "Very small", often: "thousands a day worldwide",
    effect: "Earthquakes as small as this are seldom felt."},
];
const LARGEST_CLASSED = 10;  // none of a larger magnitude is known or expected

// The depth classes of the U.S. Geological Survey, in kilometres.
const DEPTH_CLASSES = [
  {most: 70, name: "shallow", effect: "Shallow ones, down to 70 km, do most of the damage."},
  {most: 300, name: "intermediate", effect: "From 70 to 300 km down, less of the shaking reaches the surface."},
  {most: 800, name: "deep", effect: "From more than 300 km down, they are felt far away but seldom do damage."},
];

export function magnitudeClass(magnitude) {
  if (magnitude === null || magnitude > LARGEST_CLASSED) {
    return null;
  }
  // As it is shown: 6.96 reads 7.0 and is a major one.
  return MAGNITUDE_CLASSES.find(({least}) => Math.round(magnitude * 10) / 10 >= least);
}

export function depthClass(depth) {
  return depth === null ? null : DEPTH_CLASSES.find(({most}) => depth <= most) || null;
}

export function magnitudeInWords(magnitude) {
  return magnitude === null ? "" : magnitude.toFixed(1).replace(/^-0\.0$/, "0.0").replace("-", "\u2212");
}

export function depthInWords(depth) {
  if (depth === null) {
    return "";
  }
  const size = Math.abs(depth) < 9.95 ? Math.round(Math.abs(depth) * 10) / 10 : Math.round(Math.abs(depth));
  if (depth < 0 && size > 0) {
    return `${size} km above sea level`;
  }
  const depthName = depthClass(depth);
  return `Depth ${size} km` + (depthName ? ` · ${depthName.name}` : "");
}

export function meaningInWords(magnitude, depth) {
  return [magnitudeClass(magnitude), depthClass(depth)].filter(Boolean).map(({effect}) => effect).join(" ");
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

function withArticle(name) {
  return /(Islands|Reefs)$/.test(name) ? `the ${name}` : name.replace(/^The /, "the ");
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

// When the earthquakes were asked for, in the machine's zone, written like the page's other date. The time is
// null while they are up to date.
export function asOfInWords(time) {
  const date = new Date(time);
  if (time === null || Number.isNaN(date.getTime())) {
    return "";
  }
  const clock = [date.getHours(), date.getMinutes()].map(part => String(part).padStart(2, "0")).join(":");
  return `Earthquakes as of ${date.getDate()}. ${MONTHS[date.getMonth()]} ${date.getFullYear()}, ${clock}`;
}
