// What every part of the map draws with: fonts, strokes, and the paths of the basemap's shapes.

import BASEMAP from "../basemap/vector.json" with {type: "json"};

export const SANS = '"Inter", "Noto Sans", "Liberation Sans", "DejaVu Sans", sans-serif';
export const SERIF = '"Noto Serif", "Liberation Serif", "DejaVu Serif", serif';
export const HALO = "rgba(7, 13, 20, 0.8)";  // around a text
export const BACKING = "rgba(6, 12, 19, 0.7)";  // under a small text
export const BOUNDARY = "22, 178, 148";  // of the plates: unlike every colour of a magnitude or a ring, for all eyes

const SOFTENINGS = 3;

export function stroke(context, path, colour, width, dashes = []) {
  context.strokeStyle = colour;
  context.lineWidth = width;
  context.setLineDash(dashes);
  context.stroke(path);
  context.setLineDash([]);
}

export function fillBox(context, {left, top, right, bottom}, style) {
  context.fillStyle = style;
  context.fillRect(left, top, right - left, bottom - top);
}

export function fillCircle(context, {x, y}, radius, style) {
  context.fillStyle = style;
  context.beginPath();
  context.arc(x, y, radius, 0, 2 * Math.PI);
  context.fill();
}

// One path of all shapes that the view meets. Points closer than half a pixel of the screen are left out.
export function pathOf(view, shapes, density, isClosed = false) {
  const path = new Path2D();
  for (const shape of shapes) {
    if (meetsView(shape, view)) {
      addShape(path, view, shape, 0.5 / density, isClosed);
    }
  }
  return path;
}

export function meetsView([west, south, east, north], view) {
  const units = BASEMAP.unitsPerDegree;
  return west <= view.east * units && east >= view.west * units &&
      south <= view.north * units && north >= view.south * units;
}

function addShape(path, view, shape, closest, isClosed) {
  let lastX = Infinity;
  let lastY = Infinity;
  const last = shape.length - 2;
  forEachPoint(view, shape, (x, y, i) => {
    if (i === 4) {
      path.moveTo(x, y);
    } else if (Math.abs(x - lastX) + Math.abs(y - lastY) < closest && i < last) {
      return;
    } else {
      path.lineTo(x, y);
    }
    lastX = x;
    lastY = y;
  });
  if (isClosed) {
    path.closePath();
  }
}

function forEachPoint(view, shape, take) {
  let longitude = 0;
  let latitude = 0;
  for (let i = 4; i < shape.length; i += 2) {
    longitude += shape[i];
    latitude += shape[i + 1];
    take(view.x(longitude / BASEMAP.unitsPerDegree), view.y(latitude / BASEMAP.unitsPerDegree), i);
  }
}

// The lines that the view meets as curves: arrays of points {x, y}.
export function curvesOf(view, shapes) {
  return shapes.filter(shape => meetsView(shape, view)).map(shape => {
    const points = [];
    forEachPoint(view, shape, (x, y) => points.push({x, y}));
    return softened(points);
  });
}

// Cuts all corners between the ends, again and again.
function softened(points) {
  let curve = points;
  for (let i = 0; i < SOFTENINGS && curve.length > 2; ++i) {
    const cut = curve.slice(1).flatMap((to, k) => [between(curve[k], to, 0.25), between(curve[k], to, 0.75)]);
    curve = [points[0], ...cut.slice(1, -1), points.at(-1)];
  }
  return curve;
}

export function between(from, to, part) {
  return {x: from.x + part * (to.x - from.x), y: from.y + part * (to.y - from.y)};
}

export function pathOfCurves(curves) {
  const path = new Path2D();
  for (const [first, ...others] of curves) {
    path.moveTo(first.x, first.y);
    others.forEach(({x, y}) => path.lineTo(x, y));
  }
  return path;
}
