// Rings that spread once from the quake when the page has come to the screen, and are gone after two seconds. They
// wait a little, for the same process may just load the next page.

const ENTRANCE_DELAY = 500;  // milliseconds
const ENTRANCE_SECONDS = 1.4;
const ENTRANCE_RINGS = 3;
const ENTRANCE_REACH = 2.6;  // radii of the mark
const ENTRANCE_FRAME = 25;  // milliseconds at least: every other frame of a screen is smooth enough, and half the work

export function startEntrance(mark) {
  if (!matchMedia("(prefers-reduced-motion: reduce)").matches) {
    setTimeout(() => spreadRings(mark), ENTRANCE_DELAY);
  }
}

function spreadRings(mark) {
  const reach = Math.ceil(mark.radius * ENTRANCE_REACH);
  const canvas = document.createElement("canvas");
  const density = window.devicePixelRatio || 1;
  canvas.className = "entrance";
  canvas.width = canvas.height = 2 * reach * density;
  Object.assign(canvas.style, {left: mark.x - reach + "px", top: mark.y - reach + "px", width: 2 * reach + "px"});
  document.getElementById("map_canvas").append(canvas);
  const context = canvas.getContext("2d");
  context.scale(density, density);

  const start = performance.now();
  let drawn = -Infinity;
  const step = now => {
    const progress = (now - start) / 1000 / ENTRANCE_SECONDS;
    if (progress >= 1) {
      canvas.remove();
      return;
    }
    if (now - drawn >= ENTRANCE_FRAME) {
      drawn = now;
      context.clearRect(0, 0, 2 * reach, 2 * reach);
      drawSpreadingRings(context, mark, reach, Math.max(0, progress));
    }
    requestAnimationFrame(step);
  };
  requestAnimationFrame(step);
}

function drawSpreadingRings(context, mark, reach, progress) {
  for (let ring = 0; ring < ENTRANCE_RINGS; ++ring) {
    const age = progress * 1.5 - ring * 0.25;
    if (age > 0 && age < 1) {
      const eased = 1 - (1 - age) ** 2;
      context.beginPath();
      context.arc(reach, reach, Math.max(1, eased * (reach - 4 * mark.unit)), 0, 2 * Math.PI);
      context.lineWidth = 3 * mark.unit * (1 - age) + 0.6;
      context.strokeStyle = `rgba(${mark.colour}, ${0.8 * (1 - age)})`;
      context.stroke();
    }
  }
}
