// What every part of the map draws with: fonts, strokes, and the paths of the basemap's shapes.

import BASEMAP from "../basemap/vector.json" with {type: "json"};

export const SANS = '"Inter", "Noto Sans", "Liberation Sans", "DejaVu Sans", sans-serif';
export const SERIF = '"Noto Serif", "Liberation Serif", "DejaVu Serif", serif';
export const HALO = "rgba(7, 13, 20, 0.72)";  // around a text
export const BACKING = "rgba(6, 12, 19, 0.7)";  // under a small text

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
  let longitude = 0;
  let latitude = 0;
  let lastX = Infinity;
  let lastY = Infinity;
  for (let i = 4; i < shape.length; i += 2) {
    longitude += shape[i];
    latitude += shape[i + 1];
    const x = view.x(longitude / BASEMAP.unitsPerDegree);
    const y = view.y(latitude / BASEMAP.unitsPerDegree);
    if (i === 4) {
      path.moveTo(x, y);
    } else if (Math.abs(x - lastX) + Math.abs(y - lastY) < closest && i < shape.length - 2) {
      continue;
    } else {
      path.lineTo(x, y);
    }
    lastX = x;
    lastY = y;
  }
  if (isClosed) {
    path.closePath();
  }
}
