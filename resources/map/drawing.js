// What every part of the map draws with: fonts, colours and strokes.

// Each family that a machine lacks is looked for again with every size of letters, so only those that the program needs.
export const SANS = '"Liberation Sans", "DejaVu Sans", sans-serif';
export const SERIF = '"Liberation Serif", "DejaVu Serif", serif';
export const HALO = "rgba(7, 13, 20, 0.8)";  // around a text
export const BACKING = "rgba(6, 12, 19, 0.7)";  // under a small text
export const BOUNDARY = "22, 178, 148";  // of the plates: unlike every colour of a magnitude or a ring, for all eyes

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

export function pathOfCurves(curves) {
  const path = new Path2D();
  for (const [first, ...others] of curves) {
    path.moveTo(first.x, first.y);
    others.forEach(({x, y}) => path.lineTo(x, y));
  }
  return path;
}
