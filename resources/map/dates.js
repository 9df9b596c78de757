// When the quake was, and how old the answer of the service is.

const DAYS = ["Sunday", "Monday", "Tuesday", "Wednesday", "Thursday", "Friday", "Saturday"];
const MONTHS = ["January", "February", "March", "April", "May", "June", "July", "August", "September", "October",
  "November", "December"];
const MINUTE = 60 * 1000;  // milliseconds
const HOUR = 60 * MINUTE;
const DAY = 24 * HOUR;
const LONGEST_TOLD = 60;  // days
const OLD_ANSWER = 6 * HOUR;

// The page's call gives the machine's local time: Sun, 13. November 2016 11:02:56. Null for anything else.
export function dateFromText(text) {
  const parts = /^\w{3}, (\d{2})\. (\w+) (\d{4}) (\d{2}):(\d{2}):(\d{2})$/.exec(text);
  if (!parts || !MONTHS.includes(parts[2])) {
    return null;
  }
  const [day, , year, hours, minutes, seconds] = parts.slice(1).map(Number);
  const date = new Date(year, MONTHS.indexOf(parts[2]), day, hours, minutes, seconds);
  return date.getDate() === day ? date : null;
}

// How long ago, and the day and the time; each is empty where it cannot be said. A text that is no date is said as it is.
export function whenInWords(text, now) {
  const date = dateFromText(text);
  return date ? {ago: agoInWords(date, now), date: dateInWords(date, now)} : {ago: "", date: text};
}

// Empty for a time to come, and for one so long ago that the date says more.
export function agoInWords(date, now) {
  const age = now - date;
  if (age < -MINUTE || age >= LONGEST_TOLD * DAY) {
    return "";
  }
  if (age < MINUTE) {
    return "just now";
  }
  return age < HOUR ? ago(Math.floor(age / MINUTE), "minute") :
      age < DAY ? ago(Math.floor(age / HOUR), "hour") : ago(daysBetween(date, now), "day");
}

function ago(count, unit) {
  return `${count} ${unit}${count === 1 ? "" : "s"} ago`;
}

// From midnight to midnight, as one counts beside the name of a day.
function daysBetween(date, now) {
  const [from, to] = [date, now].map(time => Date.UTC(time.getFullYear(), time.getMonth(), time.getDate()));
  return Math.max(1, Math.round((to - from) / DAY));
}

function dateInWords(date, now) {
  const year = date.getFullYear() === now.getFullYear() ? "" : ` ${date.getFullYear()}`;
  return `${DAYS[date.getDay()]} ${date.getDate()} ${MONTHS[date.getMonth()]}${year}, ${clockInWords(date)}`;
}

function clockInWords(date) {
  const hours = date.getHours();
  return `${hours % 12 || 12}:${String(date.getMinutes()).padStart(2, "0")} ${hours < 12 ? "am" : "pm"}`;
}

// Empty while the answer is fresh, and without an answer.
export function ageInWords(answerTime, now) {
  const date = new Date(answerTime);
  const isOld = answerTime && now - date >= OLD_ANSWER;
  return isOld ? agoInWords(date, now) || dateInWords(date, now) : "";
}
